# How the libraries are built: one per folder of src/, which sees the headers of the libraries that it links and no
# others, so that a wrong include does not compile.

add_library(tallvex_flags INTERFACE)
target_compile_options(tallvex_flags INTERFACE -fpch-preprocess -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
# GCC 12 warns of overlapping copies in "text" + std::string where there are none (its bug 105651), at -O2 only. In
# some builds it shows the same bug as other warnings, and takes the text of a std::variant for uninitialised.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(tallvex_flags INTERFACE -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
    if(CMAKE_BUILD_TYPE STREQUAL "Release")
        target_compile_options(tallvex_flags INTERFACE -Wno-maybe-uninitialized)
    endif()
endif()
if(TALLVEX_WERROR)
    target_compile_options(tallvex_flags INTERFACE -Werror)
endif()
if(TALLVEX_SANITIZE)
    # Instrumented code makes GCC warn about std::optional; the plain build keeps that warning.
    target_compile_options(tallvex_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
                                                   -fno-omit-frame-pointer -Wno-maybe-uninitialized)
    target_link_options(tallvex_flags INTERFACE -fsanitize=address,undefined)
endif()

# tallvex_library([DEPENDS library...]): the library of the folder it is called in, all its sources but
# main.cpp. The library is named after its folder, with "_" for "/": src/ui/sales is ui_sales. Its headers are
# included by their path below src/, through links in the build tree that only this library and those that link it
# see.
function(tallvex_library)
    cmake_parse_arguments(LIBRARY "" "" "DEPENDS" ${ARGN})
    file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}/src" "${CMAKE_CURRENT_SOURCE_DIR}")
    string(REPLACE "/" "_" name "${folder}")
    set(include "${CMAKE_BINARY_DIR}/include/${name}")
    file(REMOVE_RECURSE "${include}")
    file(MAKE_DIRECTORY "${include}/${folder}")
    file(GLOB headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    foreach(header IN LISTS headers)
        cmake_path(GET header FILENAME file)
        file(CREATE_LINK "${header}" "${include}/${folder}/${file}" SYMBOLIC)
    endforeach()
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    add_library(${name} ${sources})
    target_include_directories(${name} PUBLIC "${include}")
    target_link_libraries(${name} PUBLIC ${LIBRARY_DEPENDS} PRIVATE tallvex_flags)
    # Reading the standard library's headers takes longer than compiling what most files hold. (The libraries of Qt
    # have other flags and precompile its headers; `common` makes these.)
    if(TALLVEX_SHARED_HEADERS AND NOT name MATCHES "^(common|admin|audit|play|printing_pages|ui|ui_.*)$")
        target_precompile_headers(${name} REUSE_FROM common)
    endif()
endfunction()

# embed_text(TARGET FILE NAMESPACE NAME): compiles the text of FILE into TARGET as
# "extern const std::string_view NAMESPACE::NAME", so that the programs need no data files beside them.
function(embed_text target file namespace name)
    set(out "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${file}")
    file(READ "${file}" text)
    file(CONFIGURE OUTPUT "${out}" CONTENT
        "#include <string_view>\n\nnamespace ${namespace} {\nextern const std::string_view ${name};\nconst std::string_view ${name} = R\"embedded(@text@)embedded\";\n}\n"
        @ONLY)
    set_source_files_properties("${out}" PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
    target_sources(${target} PRIVATE "${out}")
endfunction()
