# How every library, program and test of the house is built: one language level, one set of
# warnings, one naming rule. Folders only say what they hold and what they link.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()
# Line tables are enough to read a stack; full debug information doubles the time of a build.
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g1")

option(COZINHARIO_TESTES "Build the tests" ON)
option(COZINHARIO_BENCH "Build the benchmarks" ON)
option(COZINHARIO_SANITIZAR "Build with the address and undefined-behaviour sanitizers" OFF)
option(COZINHARIO_FUZZ "Build the fuzz targets (needs clang)" OFF)
set(COZINHARIO_SITE "https://www.tamarel.example" CACHE STRING "The maker's site: scheme and host, no trailing slash")

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets PrintSupport Network Svg Test)
find_package(SQLite3 REQUIRED)
find_package(ZLIB REQUIRED)
find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(cozinhario_opcoes INTERFACE)
target_include_directories(cozinhario_opcoes INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_definitions(cozinhario_opcoes INTERFACE
    QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
    QT_NO_FOREACH QT_STRICT_ITERATORS)
target_compile_options(cozinhario_opcoes INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
    -Wnull-dereference -Wformat=2 -Wimplicit-fallthrough -Wextra-semi -Werror)
if(COZINHARIO_SANITIZAR)
    # g++ 12 reports false -Wnull-dereference and -Wmaybe-uninitialized under the sanitizers.
    target_compile_options(cozinhario_opcoes INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer
        -Wno-null-dereference -Wno-maybe-uninitialized)
    target_link_options(cozinhario_opcoes INTERFACE -fsanitize=address,undefined)
endif()

# cozinhario_biblioteca(name SOURCES ... [LINKS ...] [PRIVATE ...])
# A static library; LINKS are seen by its users, PRIVATE are not.
function(cozinhario_biblioteca nome)
    cmake_parse_arguments(B "" "" "SOURCES;LINKS;PRIVATE" ${ARGN})
    add_library(${nome} STATIC ${B_SOURCES})
    target_link_libraries(${nome} PUBLIC cozinhario_opcoes ${B_LINKS} PRIVATE ${B_PRIVATE})
endfunction()

# cozinhario_teste(name SOURCES ... LINKS ... [ENV ...])
# A QtTest program, known to ctest by the same name, run on Qt's offscreen platform.
function(cozinhario_teste nome)
    if(NOT COZINHARIO_TESTES)
        return()
    endif()
    cmake_parse_arguments(T "" "" "SOURCES;LINKS;ENV" ${ARGN})
    add_executable(${nome} ${T_SOURCES})
    target_link_libraries(${nome} PRIVATE cozinhario_opcoes Qt6::Test ${T_LINKS})
    target_compile_definitions(${nome} PRIVATE PASTA_FONTES="${CMAKE_CURRENT_SOURCE_DIR}")
    set_target_properties(${nome} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/testes)
    add_test(NAME ${nome} COMMAND ${nome})
    set_tests_properties(${nome} PROPERTIES TIMEOUT 120 ENVIRONMENT
        "QT_QPA_PLATFORM=offscreen;LANG=pt_BR.UTF-8;LC_ALL=pt_BR.UTF-8;DBUS_SESSION_BUS_ADDRESS=disabled:;${T_ENV}")
endfunction()
