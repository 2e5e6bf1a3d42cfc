# Libraries that every build needs. Folders with further dependencies find them themselves.
find_package(PkgConfig REQUIRED)

# Creates an imported target from a pkg-config module. The IMPORTED_TARGET option of
# pkg_check_modules fails at generate time if a module names a missing include folder, as the
# toolkit's modules do. Does nothing if another folder has already created the target.
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
    # For the bill of materials. A module without libraries has only headers.
    foreach(module IN LISTS ARGN)
        string(REGEX REPLACE "[<>=].*" "" name "${module}")
        set(version "${${target}_VERSION}${${target}_${name}_VERSION}")
        set(relation DYNAMIC_LINK)
        if(NOT ${target}_LINK_LIBRARIES)
            set(relation STATIC_LINK)
        endif()
        set_property(GLOBAL APPEND PROPERTY APPLIST_MODULES "${name}|${version}|${relation}")
    endforeach()
endfunction()

applist_pkg_target(applist_gio gio-2.0 gio-unix-2.0)
applist_pkg_target(applist_efl elementary)
find_package(Threads REQUIRED)
