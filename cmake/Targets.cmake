# Adds a library. The build can verify that its public headers are self-contained.
#   applist_add_library(NAME ROOT include-root [FOLDER folder] HEADERS ... SOURCES ...
#                       LINK PUBLIC-targets ... [PRIVATE_LINK targets ...])
# FOLDER is the folder of the relative HEADERS and SOURCES.
function(applist_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "FOLDER;ROOT" "HEADERS;SOURCES;LINK;PRIVATE_LINK")
    if(arg_FOLDER)
        list(TRANSFORM arg_HEADERS PREPEND "${arg_FOLDER}/" REGEX "^[^/$]")
        list(TRANSFORM arg_SOURCES PREPEND "${arg_FOLDER}/" REGEX "^[^/$]")
    endif()
    if(arg_SOURCES)
        add_library(${name} STATIC ${arg_SOURCES})
        set(scope PUBLIC)
        target_link_libraries(${name} PRIVATE ${arg_PRIVATE_LINK})
    else()
        add_library(${name} INTERFACE)
        set(scope INTERFACE)
    endif()
    target_sources(${name} ${scope} FILE_SET HEADERS BASE_DIRS "${arg_ROOT}" FILES ${arg_HEADERS})
    target_link_libraries(${name} ${scope} ${arg_LINK})
endfunction()

# Adds a test program; ctest runs each test case in its own process.
#   applist_add_test(NAME [FOLDER folder] LABEL unit|bus|ui|e2e SOURCES ... LINK ... [TIMEOUT s]
#                    [DEPENDS ...] [ENVIRONMENT NAME=value ...])
# FOLDER is the folder of the relative SOURCES. DEPENDS names programs that the test starts; they are
# found in $APPLIST_BIN.
function(applist_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "FOLDER;LABEL;TIMEOUT" "SOURCES;LINK;DEPENDS;ENVIRONMENT")
    if(arg_FOLDER)
        list(TRANSFORM arg_SOURCES PREPEND "${arg_FOLDER}/" REGEX "^[^/$]")
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 60)
    endif()
    add_executable(${name} ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${APPLIST_TEST_BIN}")
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_link_libraries(${name} PRIVATE ${arg_LINK} test_options)
    target_precompile_headers(${name} REUSE_FROM test_headers)
    if(arg_DEPENDS)
        add_dependencies(${name} ${arg_DEPENDS})
    endif()
    # At its end an instrumented program writes files and traces itself.
    if(APPLIST_SANITIZE OR CMAKE_CXX_FLAGS MATCHES "--coverage")
        list(APPEND arg_ENVIRONMENT APPLIST_LOCK=off)
    endif()
    # All test programs with a label.
    if(NOT TARGET ${arg_LABEL}_tests)
        add_custom_target(${arg_LABEL}_tests)
    endif()
    add_dependencies(${arg_LABEL}_tests ${name})
    # gtest_discover_tests() mangles list-valued properties such as an environment with several
    # variables. Therefore env sets the variables and then runs the test. The sanitizers also check
    # the programs that a test starts, so these do not wait a second for other threads at their end.
    set_target_properties(${name} PROPERTIES CROSSCOMPILING_EMULATOR
        "/usr/bin/env;APPLIST_BIN=${CMAKE_RUNTIME_OUTPUT_DIRECTORY};APPLIST_SOURCE=${PROJECT_SOURCE_DIR};LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0;TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/tsan.supp:atexit_sleep_ms=0;${arg_ENVIRONMENT};${CMAKE_CROSSCOMPILING_EMULATOR}")
    include(GoogleTest)
    gtest_discover_tests(${name}
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        PROPERTIES
            LABELS ${arg_LABEL}
            TIMEOUT ${arg_TIMEOUT})
endfunction()

# Adds a program that tests start. It is built with the tests that depend on it.
#   applist_add_test_program(NAME SOURCES ... LINK ...)
function(applist_add_test_program name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK")
    add_executable(${name} EXCLUDE_FROM_ALL ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${APPLIST_TEST_BIN}")
    target_link_libraries(${name} PRIVATE ${arg_LINK})
endfunction()
