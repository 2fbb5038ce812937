# Thin wrapper: every target installs what is missing first, then uses the CMake presets.
.PHONY: run test bench format deps gallery

deps:
	./scripts/install-deps

run: deps
	cmake --preset release
	cmake --build --preset release
	./build/release/cinefita

test: deps
	cmake --preset asan
	cmake --build --preset asan
	ctest --preset asan

bench: deps
	cmake --preset release
	cmake --build --preset release --target cinefita_bench
	./build/release/bench/cinefita_bench

gallery: deps
	cmake --preset release
	cmake --build --preset release --target cinefita_gallery
	QT_QPA_PLATFORM=offscreen ./build/release/tools/gallery/cinefita_gallery build/gallery

format:
	find src tests bench -name '*.cpp' -o -name '*.h' | xargs -r clang-format -i
