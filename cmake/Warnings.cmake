# Flags for every target of ours; system headers are out of their reach.
add_compile_options(-Wall -Wextra -Wshadow -Wconversion -Werror)

if(APPLIST_SANITIZE)
    add_compile_options("-fsanitize=${APPLIST_SANITIZE}" -fno-omit-frame-pointer
                        -fno-sanitize-recover=all)
    add_link_options("-fsanitize=${APPLIST_SANITIZE}")
endif()
