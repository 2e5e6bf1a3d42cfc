# What the program needs of every system. A folder that needs more looks for it itself.
find_package(PkgConfig REQUIRED)

# An imported target from a pkg-config module. pkg_check_modules' own IMPORTED_TARGET fails at
# generate time when a module names an include folder that does not exist, as the toolkit's do.
# Two folders may ask for the same one.
function(applist_pkg_target target)
    if(TARGET ${target})
        return()
    endif()
    pkg_check_modules(${target} REQUIRED QUIET ${ARGN})
    set(folders)
    foreach(folder IN LISTS ${target}_INCLUDE_DIRS)
        if(IS_DIRECTORY "${folder}")
            list(APPEND folders "${folder}")
        endif()
    endforeach()
    add_library(${target} INTERFACE IMPORTED GLOBAL)
    target_include_directories(${target} SYSTEM INTERFACE ${folders})
    target_compile_options(${target} INTERFACE ${${target}_CFLAGS_OTHER})
    target_link_libraries(${target} INTERFACE ${${target}_LINK_LIBRARIES})
endfunction()

applist_pkg_target(applist_gio gio-2.0 gio-unix-2.0)
applist_pkg_target(applist_efl elementary)
find_package(Threads REQUIRED)
if(BUILD_TESTING)
    find_package(GTest REQUIRED)
endif()
