# Hardening flags for all installed code, including the port's. Not used together with sanitizers.
if(APPLIST_SANITIZE)
    return()
endif()

include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

add_compile_options(-fstack-protector-strong)
check_cxx_compiler_flag(-fcf-protection APPLIST_HAS_CF_PROTECTION) # x86 only
if(APPLIST_HAS_CF_PROTECTION)
    add_compile_options(-fcf-protection)
endif()
# _FORTIFY_SOURCE requires an optimised build. A level set by the packager takes precedence.
if(NOT CMAKE_CXX_FLAGS MATCHES "_FORTIFY_SOURCE")
    add_compile_options(
        "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
endif()
add_link_options(LINKER:-z,relro LINKER:-z,now)
