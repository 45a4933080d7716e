# The house rules of the build: one library per folder of src/, which sees the headers of the libraries it
# links and of no other, so that a wrong include does not compile.

add_library(tallvex_flags INTERFACE)
target_compile_options(tallvex_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
# GCC 12 sees overlapping copies in "text" + std::string where there are none (its bug 105651), at -O2 only.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(tallvex_flags INTERFACE -Wno-restrict)
    if(TALLVEX_PACKAGE)  # hardened, the same bug is seen as another fault
        target_compile_options(tallvex_flags INTERFACE -Wno-stringop-overflow)
    endif()
endif()
if(TALLVEX_WERROR)
    target_compile_options(tallvex_flags INTERFACE -Werror)
endif()
if(TALLVEX_SANITIZE)
    # The instrumented code confuses GCC's look at std::optional; the plain build keeps that warning.
    target_compile_options(tallvex_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
                                                   -fno-omit-frame-pointer -Wno-maybe-uninitialized)
    target_link_options(tallvex_flags INTERFACE -fsanitize=address,undefined)
endif()

# house_room(NAME [DEPENDS library...]): the library of the folder this is called in. Its headers are included
# as "NAME/header.h", by itself and by whoever links it, through a link of its own in the build tree.
function(house_room name)
    cmake_parse_arguments(ROOM "" "" "DEPENDS;SOURCES" ${ARGN})
    set(view "${CMAKE_BINARY_DIR}/include/${name}")
    file(MAKE_DIRECTORY "${view}")
    file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${view}/${name}" SYMBOLIC)
    if(NOT ROOM_SOURCES)
        file(GLOB ROOM_SOURCES CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
        list(FILTER ROOM_SOURCES EXCLUDE REGEX "/main\\.cpp$")
    endif()
    if(ROOM_SOURCES)
        add_library(${name} STATIC ${ROOM_SOURCES})
        target_include_directories(${name} PUBLIC "${view}")
        target_link_libraries(${name} PUBLIC ${ROOM_DEPENDS} PRIVATE tallvex_flags)
    else()
        add_library(${name} INTERFACE)
        target_include_directories(${name} INTERFACE "${view}")
        target_link_libraries(${name} INTERFACE ${ROOM_DEPENDS})
    endif()
endfunction()

# house_embed(TARGET FILE NAME): compiles the text of FILE into TARGET as "extern const std::string_view NAME"
# of the namespace TARGET, so that the programs need no data files beside them.
function(house_embed target file symbol)
    set(out "${CMAKE_CURRENT_BINARY_DIR}/${symbol}.cpp")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${file}")
    file(READ "${file}" text)
    file(CONFIGURE OUTPUT "${out}" CONTENT
        "#include <string_view>\n\nnamespace ${target} {\nextern const std::string_view ${symbol};\nconst std::string_view ${symbol} = R\"embedded(@text@)embedded\";\n}\n"
        @ONLY)
    target_sources(${target} PRIVATE "${out}")
endfunction()
