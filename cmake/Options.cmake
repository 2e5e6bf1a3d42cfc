# Build options and output folders.
set(APPLIST_PLATFORM_PORT "desktop" CACHE STRING
    "The platform port: a folder in platform/, or a path to a port elsewhere")
cmake_path(ABSOLUTE_PATH APPLIST_PLATFORM_PORT BASE_DIRECTORY "${PROJECT_SOURCE_DIR}/platform"
    OUTPUT_VARIABLE APPLIST_PLATFORM_DIR)
option(APPLIST_TOOLS "Build javamw-sim and platformctl, and the tests that use them" ON)
option(APPLIST_WERROR "Treat warnings in this tree as errors; the presets do" OFF)
set(APPLIST_USER "applist" CACHE STRING "The user that runs the application, for the bus policy")
set(APPLIST_MIDDLEWARE_USER "javamw" CACHE STRING "The user that runs the broadcast middleware")
set(APPLIST_BUS_POLICY_DIR "${CMAKE_INSTALL_DATADIR}/dbus-1/system.d"
    CACHE PATH "Folder for the system bus policy; use /etc/dbus-1/system.d if the prefix is not /usr")
set(APPLIST_SANITIZE "" CACHE STRING "Sanitizers for -fsanitize, separated by commas")
option(APPLIST_FUZZ "Build the fuzz targets (clang only)" OFF)
set(APPLIST_OUTPUT_ROOT "${PROJECT_BINARY_DIR}" CACHE PATH "Folder for the build results: programs in bin/, data in share/")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# The output folder has the layout of an installation, so that programs find their data relative to
# themselves in both.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${APPLIST_OUTPUT_ROOT}/bin")
set(APPLIST_OUTPUT_SHARE "${APPLIST_OUTPUT_ROOT}/share")
set(APPLIST_TEST_BIN "${PROJECT_BINARY_DIR}/tests/bin")
