# The program's own resource self-check, run as the operator would run it. The line
# is printed only after every check held (a failure prints to stderr and exits 1).
cinefita_add_test_run(resource_test_mode cinefita --resource-test)
set_tests_properties(resource_test_mode PROPERTIES
    PASS_REGULAR_EXPRESSION "PASS: bundled pixel font, exact VHS white strokes and transparent background\n"
    FAIL_REGULAR_EXPRESSION "ERROR: AddressSanitizer|LeakSanitizer|runtime error")
