# quorin_add_library(<name> [DEPS <targets>...])
# A static library made of every .cpp/.h in the calling folder (recursing into
# subfolders), with the folder's parent (src/) as include root, so headers are
# included as "core/VORAUtility.h".
function(quorin_add_library name)
  cmake_parse_arguments(ARG "" "" "DEPS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
       "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
  get_filename_component(parent "${CMAKE_CURRENT_SOURCE_DIR}" DIRECTORY)
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC "${parent}" "${CMAKE_CURRENT_BINARY_DIR}")
  target_link_libraries(${name} PUBLIC ${ARG_DEPS})
  quorin_warnings(${name})
endfunction()

function(quorin_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra)
endfunction()

# quorin_add_test(<name> SOURCES <files>... LIBS <targets>... LABEL unit|integration|gui)
# One Qt Test executable, registered with CTest. Every test runs with the
# offscreen platform and a fresh temporary app home (QUORIN_HOME) per run.
function(quorin_add_test name)
  cmake_parse_arguments(ARG "" "LABEL;TIMEOUT" "SOURCES;LIBS" ${ARGN})
  if(NOT ARG_LABEL)
    set(ARG_LABEL unit)
  endif()
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 240)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE quorin_testsupport Qt6::Test ${ARG_LIBS})
  quorin_warnings(${name})
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    LABELS "${ARG_LABEL}"
    TIMEOUT ${ARG_TIMEOUT}
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_LOGGING_RULES=*.debug=false")
  if(QUORIN_SANITIZE STREQUAL "address")
    # Appended to what the caller set (scripts/sanitize.sh adds log paths), so
    # the suppressions of leaks outside our code always apply, child processes
    # included, and a sanitized build gets the time it needs.
    math(EXPR sanitized_timeout "${ARG_TIMEOUT} * 3")
    set(sanitizer_env
      "LSAN_OPTIONS=string_append::suppressions=${PROJECT_SOURCE_DIR}/tools/lsan.supp:print_suppressions=0"
      "UBSAN_OPTIONS=string_append::print_stacktrace=1:halt_on_error=1")
    # The window suites' suppressions name frames inside Qt, built without frame
    # pointers: there allocations are traced with the slow unwinder, or those frames
    # would be missing. Elsewhere it would slow the app and the site, started as
    # child processes, past the suites' waits.
    if(ARG_LABEL STREQUAL "gui")
      list(APPEND sanitizer_env "ASAN_OPTIONS=string_append::fast_unwind_on_malloc=0")
    endif()
    set_tests_properties(${name} PROPERTIES
      TIMEOUT ${sanitized_timeout}
      ENVIRONMENT_MODIFICATION "${sanitizer_env}")
  endif()
endfunction()

# quorin_add_bench(<name> SOURCES <files>... LIBS <targets>...)
# Benchmarks are built with the project but never registered with CTest.
function(quorin_add_bench name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS})
  quorin_warnings(${name})
endfunction()
