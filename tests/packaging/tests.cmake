# Installs this build tree into a scratch prefix and checks the menu entry, icons
# and metadata there. Needs desktop-file-utils and appstream (scripts/install-deps).
add_test(NAME install_tree
         COMMAND ${CMAKE_CURRENT_LIST_DIR}/check-install.sh ${CMAKE_COMMAND} ${CMAKE_BINARY_DIR} ${CINEFITA_APP_ID})
set_tests_properties(install_tree PROPERTIES ENVIRONMENT "${CINEFITA_TEST_ENV}"
                     PASS_REGULAR_EXPRESSION "installed tree checked"
                     FAIL_REGULAR_EXPRESSION "FAIL:|ERROR: AddressSanitizer|LeakSanitizer|runtime error")
