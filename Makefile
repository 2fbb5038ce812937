# Thin wrapper: every target installs what is missing first, then uses the CMake presets.
.PHONY: run test bench package gallery format deps crash-test soak fuzz

deps:
	./scripts/install-deps

run: deps
	cmake --preset release
	cmake --build --preset release --target cinefita
	./build/release/cinefita

test: deps
	cmake --preset asan
	cmake --build --preset asan
	ctest --preset asan

# The kill and power-cut tests at their full counts (CTest runs fewer).
crash-test: deps
	cmake --preset asan
	cmake --build --preset asan --target test_crashsafety test_powercut
	CINEFITA_KILLS=240 CINEFITA_CUTS=2000 ctest --preset asan -R '^test_(crashsafety|powercut)$$'

# Random keys on the real window at full count (CTest runs a few thousand); the seed
# is printed, and SOAK_SEED=<seed> replays a run.
SOAK_KEYS ?= 200000
soak: deps
	cmake --preset asan
	cmake --build --preset asan --target test_soak
	CINEFITA_SOAK_KEYS=$(SOAK_KEYS) $(if $(SOAK_SEED),CINEFITA_SOAK_SEED=$(SOAK_SEED)) QTEST_FUNCTION_TIMEOUT=7200000 \
	    ctest --preset asan --timeout 7200 -R '^test_soak$$'

# libFuzzer targets (clang, AddressSanitizer + UBSan), each run for FUZZ_SECONDS on
# a working corpus in build/fuzz/corpus seeded from tests/fuzz/corpus.
FUZZ_SECONDS ?= 60
fuzz:
	./scripts/install-deps --fuzz
	cmake -S tests/fuzz -B build/fuzz -G Ninja -DCMAKE_CXX_COMPILER=clang++
	cmake --build build/fuzz
	for target in store filmcsv readers pages; do \
	    mkdir -p build/fuzz/corpus/$$target; \
	    LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp TZ=America/Sao_Paulo \
	        ./build/fuzz/fuzz_$$target -max_total_time=$(FUZZ_SECONDS) -max_len=65536 -rss_limit_mb=4096 -artifact_prefix=build/fuzz/ \
	        build/fuzz/corpus/$$target tests/fuzz/corpus/$$target || exit 1; \
	done

bench: deps
	cmake --preset release
	cmake --build --preset release --target cinefita_bench cinefita_bench_lists cinefita_bench_documents cinefita_bench_counter
	./build/release/bench/cinefita_bench_lists
	./build/release/bench/cinefita_bench_documents
	./build/release/bench/cinefita_bench
	./build/release/bench/cinefita_bench_counter

# The Debian package: only the program, its icons and its documents (manual page,
# changelog, picture of the window) are built, then CPack collects the installation
# into build/release/packages/ and lintian must find no error and no warning.
package: deps
	cmake --preset release
	cmake --build --preset release --target cinefita cinefita_icons cinefita_docs
	cd build/release && cpack -G DEB
	lintian --fail-on error,warning build/release/packages/cinefita_*.deb

gallery: deps
	cmake --preset release
	cmake --build --preset release --target cinefita_gallery
	QT_QPA_PLATFORM=offscreen ./build/release/tools/gallery/cinefita_gallery build/gallery

format:
	find src tests bench tools packaging -name '*.cpp' -o -name '*.h' | xargs -r clang-format -i
