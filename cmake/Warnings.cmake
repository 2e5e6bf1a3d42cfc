# Compiler warnings and sanitizers for the targets of this tree. The warnings do not apply to system
# headers or to a port outside the tree.
set(APPLIST_WARNINGS -Wall -Wextra -Wshadow -Wconversion)
if(APPLIST_WERROR)
    list(APPEND APPLIST_WARNINGS -Werror)
endif()
add_compile_options(${APPLIST_WARNINGS})

if(APPLIST_SANITIZE)
    add_compile_options("-fsanitize=${APPLIST_SANITIZE}" -fno-omit-frame-pointer
                        -fno-sanitize-recover=all)
    add_link_options("-fsanitize=${APPLIST_SANITIZE}")
endif()
