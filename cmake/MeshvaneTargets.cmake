# The one place that says how our own code is compiled.

add_library(meshvane_build_flags INTERFACE)
# Output bytes must not depend on the processor, so no multiplication and addition may be fused.
target_compile_options(meshvane_build_flags INTERFACE
    $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-ffp-contract=off>
    $<$<CXX_COMPILER_ID:MSVC>:/fp:precise /utf-8>)
if(MESHVANE_BUILD_FUZZERS)
    # The fuzzers need coverage counters in all our code, but only they link libFuzzer's main.
    target_compile_options(meshvane_build_flags INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(meshvane_build_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# The x87 unit of 32-bit x86 computes with 80 bits and rounds when it stores a number. Every Pentium 4 has SSE2.
include(CheckCXXSymbolExists)
check_cxx_symbol_exists(__i386__ cstddef MESHVANE_FOR_32_BIT_X86)
set(meshvane_arithmetic_options)
if(MESHVANE_FOR_32_BIT_X86)
    set(meshvane_arithmetic_options -msse2 -mfpmath=sse)
endif()

# 32-bit systems open files of 2 GiB and more only on request.
set(meshvane_file_definitions)
if(UNIX AND CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(meshvane_file_definitions _FILE_OFFSET_BITS=64)
endif()

add_library(meshvane_warnings INTERFACE)
target_compile_options(meshvane_warnings INTERFACE
    $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion
        -Wshadow -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wnull-dereference
        -Wformat=2 -Wundef>
    $<$<CXX_COMPILER_ID:GNU>:-Wdouble-promotion -Wduplicated-cond -Wlogical-op -Wuseless-cast>
    $<$<CXX_COMPILER_ID:MSVC>:/W4>)
if(MESHVANE_WARNINGS_AS_ERRORS)
    target_compile_options(meshvane_warnings INTERFACE
        $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-Werror>
        $<$<CXX_COMPILER_ID:MSVC>:/WX>)
endif()

# Our language level, warnings and floating-point rules for one target. Its users get the language level and,
# since headers compute, too, the unit that computes.
function(meshvane_own_code target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES CXX_STANDARD 17 CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF)
    target_compile_options(${target} PUBLIC ${meshvane_arithmetic_options})
    target_compile_definitions(${target} PRIVATE ${meshvane_file_definitions})
    target_link_libraries(${target} PRIVATE
        $<BUILD_INTERFACE:meshvane_build_flags> $<BUILD_INTERFACE:meshvane_warnings>)
endfunction()

# A static library whose headers are included relative to the project's root.
function(meshvane_add_library target)
    add_library(${target} STATIC ${ARGN})
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
    meshvane_own_code(${target})
endfunction()
