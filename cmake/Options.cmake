# What a person building applist can choose, and where the results go.
set(APPLIST_PLATFORM_PORT "desktop" CACHE STRING
    "The platform port: a folder of platform/, or the path of one kept elsewhere")
cmake_path(ABSOLUTE_PATH APPLIST_PLATFORM_PORT BASE_DIRECTORY "${PROJECT_SOURCE_DIR}/platform"
    OUTPUT_VARIABLE APPLIST_PLATFORM_DIR)
option(APPLIST_TOOLS "Build javamw-sim and platformctl, and the tests that use them" ON)
option(APPLIST_WERROR "Treat warnings in this tree as errors; the presets do" OFF)
set(APPLIST_USER "applist" CACHE STRING "The user who runs the application, for the bus' policy")
set(APPLIST_MIDDLEWARE_USER "javamw" CACHE STRING "The user who runs the broadcast middleware")
set(APPLIST_BUS_POLICY_DIR "${CMAKE_INSTALL_DATADIR}/dbus-1/system.d"
    CACHE PATH "Where the system bus looks for policies; /etc/dbus-1/system.d beside a prefix of its own")
set(APPLIST_SANITIZE "" CACHE STRING "Sanitizers for -fsanitize, separated by commas")
option(APPLIST_FUZZ "Build the fuzz targets (clang only)" OFF)
set(APPLIST_OUTPUT_ROOT "${PROJECT_BINARY_DIR}" CACHE PATH "Programs go to bin/ here, their data to share/")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# The tree under the output root has the shape of an installed one, so that programs find their
# data relative to themselves in both.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${APPLIST_OUTPUT_ROOT}/bin")
set(APPLIST_OUTPUT_SHARE "${APPLIST_OUTPUT_ROOT}/share")
set(APPLIST_TEST_BIN "${PROJECT_BINARY_DIR}/tests/bin")
