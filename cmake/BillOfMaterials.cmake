# Writes the bill of materials, an SPDX 2.3 document that names the libraries of the programs with the
# versions that the build has found. Included before the tests, whose libraries are not part of the
# product.

# The library of each pkg-config module, and its licence.
set(efl "efl|BSD-2-Clause AND LGPL-2.1-or-later")
set(LIBRARY_elementary "${efl}")
set(LIBRARY_ecore-x "${efl}")
set(LIBRARY_efl "${efl}")
set(LIBRARY_eo "${efl}")
set(LIBRARY_gio-2.0 "glib2.0|LGPL-2.1-or-later")
set(LIBRARY_gio-unix-2.0 "glib2.0|LGPL-2.1-or-later")
set(LIBRARY_fontconfig "fontconfig|HPND-sell-variant")
set(LIBRARY_wayland-client "wayland|MIT")
set(LIBRARY_x11 "libx11|MIT")
set(LIBRARY_xcb "libxcb|MIT")
set(LIBRARY_xext "libxext|MIT")
set(LIBRARY_libcrypto "openssl|Apache-2.0")
set(LIBRARY_libdvbpsi "libdvbpsi|LGPL-2.1-or-later")
set(LIBRARY_aribb24 "aribb24|LGPL-3.0-or-later")
set(LIBRARY_libxml-2.0 "libxml2|MIT")
set(LIBRARY_nlohmann_json "nlohmann-json3|MIT")
set(LIBRARY_libpcap "libpcap|BSD-3-Clause")
set(LIBRARY_libedit "libedit|BSD-3-Clause")

# Adds a package that from has the relation to. Later calls for the same package do nothing. The
# caller's lists bill_names, bill_packages and bill_relations have the results.
function(applist_bill_add from relation name version licence)
    if(name IN_LIST bill_names)
        return()
    endif()
    list(APPEND bill_names ${name})
    string(CONFIGURE [[    {
      "SPDXID": "SPDXRef-@name@",
      "name": "@name@",
      "versionInfo": "@version@",
      "downloadLocation": "NOASSERTION",
      "filesAnalyzed": false,
      "licenseConcluded": "@licence@",
      "licenseDeclared": "@licence@"
    }]] package @ONLY)
    string(CONFIGURE [[    {
      "spdxElementId": "SPDXRef-@from@",
      "relationshipType": "@relation@",
      "relatedSpdxElement": "SPDXRef-@name@"
    }]] link @ONLY)
    list(APPEND bill_packages "${package}")
    list(APPEND bill_relations "${link}")
    return(PROPAGATE bill_names bill_packages bill_relations)
endfunction()

# Asks the compiler for the versions of the C library and the C++ library.
function(applist_bill_add_runtime)
    set(source "${PROJECT_BINARY_DIR}/runtime-versions.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "#include <cstddef>\nglibc=__GLIBC__.__GLIBC_MINOR__ gcc=_GLIBCXX_RELEASE\n")
    set(sysroot)
    if(CMAKE_SYSROOT)
        set(sysroot "--sysroot=${CMAKE_SYSROOT}")
    endif()
    execute_process(COMMAND "${CMAKE_CXX_COMPILER}" ${sysroot} -E -P "${source}" OUTPUT_VARIABLE text)
    if(NOT text MATCHES "glibc=([0-9]+) ?\\. ?([0-9]+) gcc=([0-9]+)")
        message(WARNING "The bill of materials does not have the C and C++ libraries, which are not GNU's.")
        return()
    endif()
    set(gcc ${CMAKE_MATCH_3})
    applist_bill_add(applist DYNAMIC_LINK glibc ${CMAKE_MATCH_1}.${CMAKE_MATCH_2} LGPL-2.1-or-later)
    applist_bill_add(applist DYNAMIC_LINK gcc-${gcc} ${gcc} "GPL-3.0-or-later WITH GCC-exception-3.1")
    return(PROPAGATE bill_names bill_packages bill_relations)
endfunction()

function(applist_write_bill file)
    applist_bill_add(DOCUMENT DESCRIBES applist "${PROJECT_VERSION}" Apache-2.0)
    applist_bill_add_runtime()
    get_property(modules GLOBAL PROPERTY APPLIST_MODULES)
    foreach(module IN LISTS modules)
        string(REPLACE "|" ";" fields "${module}")
        list(POP_FRONT fields name version relation)
        set(fields "${name}|NOASSERTION") # a module of another port
        if(DEFINED LIBRARY_${name})
            set(fields "${LIBRARY_${name}}")
        endif()
        string(REPLACE "|" ";" fields "${fields}")
        list(POP_FRONT fields library licence)
        applist_bill_add(applist ${relation} ${library} "${version}" "${licence}")
    endforeach()
    list(JOIN bill_packages ",\n" packages)
    list(JOIN bill_relations ",\n" relations)
    string(SHA1 digest "${packages}")
    # The time of SOURCE_DATE_EPOCH if this variable is set, so that two builds are equal.
    string(TIMESTAMP created "%Y-%m-%dT%H:%M:%SZ" UTC)
    string(CONFIGURE [[{
  "spdxVersion": "SPDX-2.3",
  "SPDXID": "SPDXRef-DOCUMENT",
  "dataLicense": "CC0-1.0",
  "name": "applist-@PROJECT_VERSION@",
  "documentNamespace": "https://vantu.org/spdx/applist-@PROJECT_VERSION@-@digest@",
  "creationInfo": { "created": "@created@", "creators": ["Organization: the applist authors"] },
  "packages": [
@packages@
  ],
  "relationships": [
@relations@
  ]
}
]] text @ONLY)
    file(WRITE "${file}" "${text}")
    install(FILES "${file}" DESTINATION "${CMAKE_INSTALL_DOCDIR}")
endfunction()

applist_write_bill("${APPLIST_OUTPUT_SHARE}/doc/applist/applist.spdx.json")
