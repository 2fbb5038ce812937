# Installs this build tree into a scratch prefix and checks the menu entry, icons
# and metadata there. Needs desktop-file-utils and appstream (scripts/install-deps).
add_test(NAME install_tree
         COMMAND ${CMAKE_CURRENT_LIST_DIR}/check-install.sh ${CMAKE_COMMAND} ${CMAKE_BINARY_DIR} ${CINEFITA_APP_ID})
set_tests_properties(install_tree PROPERTIES ENVIRONMENT "${CINEFITA_TEST_ENV}"
                     PASS_REGULAR_EXPRESSION "installed tree checked"
                     FAIL_REGULAR_EXPRESSION "FAIL:|ERROR: AddressSanitizer|LeakSanitizer|runtime error")

# Builds the Debian package from this build tree and runs lintian on it (a warning
# fails). Needs lintian (scripts/install-deps).
add_test(NAME debian_package
         COMMAND ${CMAKE_CURRENT_LIST_DIR}/check-package.sh ${CMAKE_CPACK_COMMAND} ${CMAKE_BINARY_DIR})
set_tests_properties(debian_package PROPERTIES PASS_REGULAR_EXPRESSION "lintian accepts"
                     FAIL_REGULAR_EXPRESSION "FAIL:" TIMEOUT 600)
