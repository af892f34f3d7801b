# What all targets share: standard, warnings, sanitizers, a fast compiler cache and linker, the precompiled header.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
                    -Woverloaded-virtual -Wold-style-cast)
# Leaving fields of an aggregate at their defaults is the point of designated initialisers.
add_compile_options(-Wno-missing-field-initializers)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees overflows in inlined concatenations of short strings, where there are none.
    add_compile_options(-Wno-array-bounds -Wno-stringop-overflow -Wno-restrict)
endif()
if(BRINDLEWICK_WERROR)
    add_compile_options(-Werror)
endif()

if(BRINDLEWICK_SANITIZERS)
    add_compile_options(-fsanitize=${BRINDLEWICK_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${BRINDLEWICK_SANITIZERS})
endif()

if(BRINDLEWICK_FUZZERS)
    # Coverage of all modules guides the fuzzers; only their programs get libFuzzer's main.
    add_compile_options(-fsanitize=fuzzer-no-link)
    add_link_options(-fsanitize=fuzzer-no-link)
endif()

if(CMAKE_BUILD_TYPE MATCHES "^Rel" AND NOT BRINDLEWICK_SANITIZERS)
    include(BrindlewickHardening)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    # The cache must be told that a precompiled header may stand in for the headers it was made from.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE_PROGRAM})
    add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
endif()

find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM)
    add_link_options(-fuse-ld=mold)
endif()

# One header compiled once for all: the standard library and the JSON library are most of what every file reads.
file(WRITE ${PROJECT_BINARY_DIR}/Precompiled.cpp "")
add_library(BrindlewickPrecompiled OBJECT ${PROJECT_BINARY_DIR}/Precompiled.cpp)
target_precompile_headers(BrindlewickPrecompiled PRIVATE ${PROJECT_SOURCE_DIR}/cmake/Precompiled.h)

# A module may use exactly what is named here: the link line is what keeps the layers apart.
function(brindlewick_module TARGET)
    target_include_directories(${TARGET} PUBLIC ${PROJECT_SOURCE_DIR}/Sources)
    target_precompile_headers(${TARGET} REUSE_FROM BrindlewickPrecompiled)
    target_link_libraries(${TARGET} ${ARGN})
endfunction()

function(brindlewick_program TARGET)
    target_precompile_headers(${TARGET} REUSE_FROM BrindlewickPrecompiled)
    target_link_libraries(${TARGET} PRIVATE ${ARGN})
endfunction()
