# cmake -DQMLLINT_DIRS=<dir|dir> -DIMPORT_DIR=<dir> -DFILES=<a.qml|b.qml|...> -P QmlLint.cmake
# Lints every QML file of the app's module and fails on any warning, so that
# qmllint (and qmlcachegen with it) keeps seeing every binding. Without
# qmllint it says so and the test counts as skipped.
string(REPLACE "|" ";" QMLLINT_DIRS "${QMLLINT_DIRS}")
string(REPLACE "|" ";" FILES "${FILES}")
find_program(qmllint NAMES qmllint PATHS ${QMLLINT_DIRS} NO_DEFAULT_PATH)
if(NOT qmllint)
  find_program(qmllint NAMES qmllint6 qmllint)
endif()
if(NOT qmllint)
  message(STATUS "SKIPPED: qmllint not found in ${QMLLINT_DIRS} (Debian package qt6-declarative-dev-tools)")
  return()
endif()
if(NOT EXISTS "${IMPORT_DIR}/Quorin/qmldir")
  message(FATAL_ERROR "${IMPORT_DIR}/Quorin/qmldir is missing: build quorin_app first")
endif()
execute_process(COMMAND "${qmllint}" -I "${IMPORT_DIR}" ${FILES}
                RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
string(REGEX MATCHALL "Warning: [^\n]*" warnings "${out}${err}")
list(LENGTH warnings count)
if(NOT status EQUAL 0 OR count GREATER 0)
  message(FATAL_ERROR "qmllint exited with ${status} and ${count} warnings:\n${out}${err}")
endif()
list(LENGTH FILES files)
message(STATUS "qmllint: ${files} files, no warning")
