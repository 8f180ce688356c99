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
option(COZINHARIO_SANITIZAR "Build with the address and undefined-behaviour sanitizers" OFF)
option(COZINHARIO_FUZZ "Build the fuzz targets and instrument what they read (needs clang)" OFF)
option(COZINHARIO_PCH "Precompile the headers of Qt that nearly every file includes" ON)
set(COZINHARIO_SITE "https://www.tamarel.example" CACHE STRING "The maker's site: scheme and host, no trailing slash")

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets PrintSupport Network Svg)
find_package(SQLite3 REQUIRED)
find_package(ZLIB REQUIRED)
find_package(Qt6 6.4 REQUIRED COMPONENTS Test) # the player of scripts has it too
if(COZINHARIO_TESTES)
    find_package(Python3 REQUIRED COMPONENTS Interpreter)
endif()
# The benches are built where their library is installed, unless somebody says otherwise.
find_package(benchmark QUIET)
option(COZINHARIO_BENCH "Build the benchmarks" ${benchmark_FOUND})
if(COZINHARIO_BENCH)
    find_package(benchmark REQUIRED)
endif()
find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(cozinhario_opcoes INTERFACE)
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
        -Wno-null-dereference)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(cozinhario_opcoes INTERFACE -Wno-maybe-uninitialized)
    endif()
    target_link_options(cozinhario_opcoes INTERFACE -fsanitize=address,undefined)
endif()
if(COZINHARIO_FUZZ)
    target_compile_options(cozinhario_opcoes INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(cozinhario_opcoes INTERFACE -fsanitize=address,undefined)
endif()
# What is given away is hardened: a fault in a parser must not become somebody's way in.
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT COZINHARIO_SANITIZAR)
    include(CheckPIESupported)
    check_pie_supported(LANGUAGES CXX)
    target_compile_options(cozinhario_opcoes INTERFACE
        -fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    include(CheckCXXCompilerFlag)
    check_cxx_compiler_flag(-fcf-protection=full COZINHARIO_TEM_CF_PROTECTION)
    if(COZINHARIO_TEM_CF_PROTECTION)
        target_compile_options(cozinhario_opcoes INTERFACE -fcf-protection=full)
    endif()
    target_link_options(cozinhario_opcoes INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
endif()
find_program(COZINHARIO_LLD ld.lld)
if(COZINHARIO_LLD AND NOT COZINHARIO_FUZZ)
    target_link_options(cozinhario_opcoes INTERFACE -fuse-ld=lld)
endif()

# Headers of Qt that nearly every file includes, compiled once for each kind of code. What holds rules and no
# window sees Qt's core only.
function(cozinhario_precompilar nome)
    cmake_parse_arguments(P "" "CABECALHO" "LINKS" ${ARGN})
    if(NOT COZINHARIO_PCH)
        return()
    endif()
    add_library(${nome} OBJECT ${CMAKE_SOURCE_DIR}/cmake/pch/nada.cpp)
    set_target_properties(${nome} PROPERTIES AUTOMOC OFF AUTORCC OFF)
    target_link_libraries(${nome} PRIVATE cozinhario_opcoes ${P_LINKS})
    target_precompile_headers(${nome} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/pch/${P_CABECALHO})
    target_compile_options(${nome} PRIVATE -Winvalid-pch)
endfunction()
cozinhario_precompilar(pch_regras CABECALHO regras.h LINKS Qt6::Core)
cozinhario_precompilar(pch_janelas CABECALHO janelas.h LINKS Qt6::Widgets)
if(COZINHARIO_TESTES)
    # QtTest's own target defines the folder of each test, and a precompiled header stands no differing definitions.
    add_library(cozinhario_qttest INTERFACE)
    target_include_directories(cozinhario_qttest SYSTEM INTERFACE $<TARGET_PROPERTY:Qt6::Test,INTERFACE_INCLUDE_DIRECTORIES>)
    target_compile_definitions(cozinhario_qttest INTERFACE QT_TESTLIB_LIB)
    target_link_libraries(cozinhario_qttest INTERFACE $<TARGET_FILE:Qt6::Test> Qt6::Widgets)
    cozinhario_precompilar(pch_testes CABECALHO testes.h LINKS cozinhario_qttest)
endif()

function(cozinhario_reusar_pch alvo pch)
    if(COZINHARIO_PCH)
        target_precompile_headers(${alvo} REUSE_FROM ${pch})
        target_compile_options(${alvo} PRIVATE -Winvalid-pch)
    endif()
endfunction()

# Which headers a library offers: those of its sources, and the folder's first library those that stand alone and
# are not listed. They are reached through an include root of the library's own, as "folder/Header.h", so that an
# include of something that the library does not link does not compile.
function(cozinhario_raiz_de_includes nome)
    file(RELATIVE_PATH comodo ${CMAKE_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    set(raiz ${CMAKE_BINARY_DIR}/raizes/${nome})
    list(TRANSFORM ARGN REPLACE "\\.cpp$" ".h" OUTPUT_VARIABLE cabecalhos)
    get_property(primeira DIRECTORY PROPERTY COZINHARIO_PRIMEIRA)
    if(NOT primeira)
        set_property(DIRECTORY PROPERTY COZINHARIO_PRIMEIRA ${nome})
        file(READ CMakeLists.txt lista)
        file(GLOB sozinhos RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} CONFIGURE_DEPENDS *.h)
        foreach(cabecalho ${sozinhos})
            string(REGEX REPLACE "\\.h$" "" base ${cabecalho})
            if(NOT lista MATCHES "[ \n(]${base}\\.(h|cpp)")
                list(APPEND cabecalhos ${cabecalho})
            endif()
        endforeach()
    endif()
    foreach(cabecalho ${cabecalhos})
        if(cabecalho MATCHES "\\.h$" AND EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${cabecalho})
            file(CONFIGURE OUTPUT ${raiz}/${comodo}/${cabecalho}
                 CONTENT "#include \"${CMAKE_CURRENT_SOURCE_DIR}/${cabecalho}\" // IWYU pragma: export\n" @ONLY)
        endif()
    endforeach()
    target_include_directories(${nome} PUBLIC ${raiz})
    set_property(GLOBAL APPEND PROPERTY COZINHARIO_BIBLIOTECAS ${nome})
endfunction()

# cozinhario_biblioteca(name SOURCES ... [LINKS ...] [PRIVATE ...])
# A static library; LINKS are seen by its users, PRIVATE are not. A header that stands alone may be listed among the
# SOURCES, where it belongs to another than the folder's first library.
function(cozinhario_biblioteca nome)
    cmake_parse_arguments(B "" "" "SOURCES;LINKS;PRIVATE" ${ARGN})
    add_library(${nome} STATIC ${B_SOURCES})
    target_link_libraries(${nome} PUBLIC cozinhario_opcoes ${B_LINKS} PRIVATE ${B_PRIVATE})
    cozinhario_raiz_de_includes(${nome} ${B_SOURCES})
    if("base_widgets" IN_LIST B_LINKS OR "Qt6::Widgets" IN_LIST B_LINKS)
        cozinhario_reusar_pch(${nome} pch_janelas)
    else()
        cozinhario_reusar_pch(${nome} pch_regras)
    endif()
endfunction()

# The helpers of tests, as "folder/tests/Header.h", are for tests and benches only.
set(COZINHARIO_RAIZ_DOS_TESTES ${CMAKE_BINARY_DIR}/raizes/testes)
file(GLOB cabecalhos_dos_testes RELATIVE ${CMAKE_SOURCE_DIR} CONFIGURE_DEPENDS
     ${CMAKE_SOURCE_DIR}/*/tests/*.h ${CMAKE_SOURCE_DIR}/*/*/tests/*.h ${CMAKE_SOURCE_DIR}/testes/*.h)
foreach(cabecalho ${cabecalhos_dos_testes})
    file(CONFIGURE OUTPUT ${COZINHARIO_RAIZ_DOS_TESTES}/${cabecalho}
         CONTENT "#include \"${CMAKE_SOURCE_DIR}/${cabecalho}\" // IWYU pragma: export\n" @ONLY)
endforeach()

# cozinhario_programa_de_teste(name SOURCES ... LINKS ...)
# A program that tests need; it lies beside them.
function(cozinhario_programa_de_teste nome)
    if(NOT COZINHARIO_TESTES)
        return()
    endif()
    cmake_parse_arguments(T "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${nome} ${T_SOURCES})
    target_link_libraries(${nome} PRIVATE cozinhario_opcoes ${T_LINKS})
    target_include_directories(${nome} PRIVATE ${COZINHARIO_RAIZ_DOS_TESTES})
    target_compile_definitions(${nome} PRIVATE PASTA_FONTES="${CMAKE_CURRENT_SOURCE_DIR}")
    set_target_properties(${nome} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/testes)
endfunction()

# cozinhario_teste(name SOURCES ... LINKS ... [ENV ...])
# A QtTest program, known to ctest by the same name, run on Qt's offscreen platform.
function(cozinhario_teste nome)
    if(NOT COZINHARIO_TESTES)
        return()
    endif()
    cmake_parse_arguments(T "" "" "SOURCES;LINKS;ENV" ${ARGN})
    cozinhario_programa_de_teste(${nome} SOURCES ${T_SOURCES} LINKS cozinhario_qttest ${T_LINKS})
    cozinhario_reusar_pch(${nome} pch_testes)
    # QtTest looks at this one definition, which the precompiled header was made without.
    target_compile_options(${nome} PRIVATE -UQT_NETWORK_LIB)
    add_test(NAME ${nome} COMMAND ${nome})
    set_tests_properties(${nome} PROPERTIES TIMEOUT 120 ENVIRONMENT
        "QT_QPA_PLATFORM=offscreen;LANG=pt_BR.UTF-8;LC_ALL=pt_BR.UTF-8;DBUS_SESSION_BUS_ADDRESS=disabled:;${T_ENV}")
endfunction()

# cozinhario_bench(name SOURCES ... LINKS ... [DADOS folder])
# A program of Google Benchmark, with the invented books of bench/; PASTA_FONTES names the folder whose data it measures with.
function(cozinhario_bench nome)
    if(NOT COZINHARIO_BENCH)
        return()
    endif()
    cmake_parse_arguments(B "" "DADOS" "SOURCES;LINKS" ${ARGN})
    add_executable(${nome} ${B_SOURCES})
    target_link_libraries(${nome} PRIVATE cozinhario_opcoes gerador_livro ${B_LINKS} benchmark::benchmark)
    target_include_directories(${nome} PRIVATE ${COZINHARIO_RAIZ_DOS_TESTES})
    if(B_DADOS)
        target_compile_definitions(${nome} PRIVATE PASTA_FONTES="${CMAKE_SOURCE_DIR}/${B_DADOS}")
    endif()
endfunction()

# cozinhario_fuzz(name SOURCES ... LINKS ... CORPUS folder...)
# A target of the fuzzer: with clang and COZINHARIO_FUZZ a program fuzz_NAME for it, else repetir_NAME, which the
# tests let read every input of the CORPUS once. Both take files and folders.
function(cozinhario_fuzz nome)
    cmake_parse_arguments(F "" "" "SOURCES;LINKS;CORPUS" ${ARGN})
    if(COZINHARIO_FUZZ)
        add_executable(fuzz_${nome} ${F_SOURCES})
        target_link_libraries(fuzz_${nome} PRIVATE cozinhario_opcoes ${F_LINKS})
        target_link_options(fuzz_${nome} PRIVATE -fsanitize=fuzzer)
    elseif(COZINHARIO_TESTES)
        cozinhario_programa_de_teste(repetir_${nome} SOURCES ${F_SOURCES} ${CMAKE_SOURCE_DIR}/testes/Repetir.cpp
                                     LINKS Qt6::Core ${F_LINKS})
        add_test(NAME repetir_${nome} COMMAND repetir_${nome} ${F_CORPUS} WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
        set_tests_properties(repetir_${nome} PROPERTIES TIMEOUT 120)
    endif()
endfunction()
