# What every target of this project has in common.

add_library(vellumo_options INTERFACE)
target_compile_options(vellumo_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ 12 sees overflows in inlined copies of vectors and strings that cannot happen.
    target_compile_options(vellumo_options INTERFACE -Wno-array-bounds -Wno-stringop-overflow)
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Release")
    target_compile_options(vellumo_options INTERFACE -g1)
endif()
if(VELLUMO_SANITIZE)
    # g++ 12 raises false alarms of this kind once the sanitizers have rewritten the code.
    target_compile_options(vellumo_options INTERFACE -O1 -g1 -fsanitize=address,undefined -fno-sanitize-recover=all
        -fno-omit-frame-pointer -Wno-maybe-uninitialized)
    target_link_options(vellumo_options INTERFACE -fsanitize=address,undefined)
endif()
if(VELLUMO_FUZZ)
    target_compile_options(vellumo_options INTERFACE -fsanitize=fuzzer-no-link,address,undefined
        -fno-sanitize-recover=all)
    target_link_options(vellumo_options INTERFACE -fsanitize=address,undefined)
endif()

# vellumo_layer(<target> FOLDER <name as it stands in #include> SOURCES ... [PUBLIC ...] [PRIVATE ...])
#
# One folder of src/ as a static library. A target sees the headers of a folder only when it links that folder's
# target: the include path holds one link per folder instead of src/ as a whole.
function(vellumo_layer target)
    cmake_parse_arguments(ARG "" "FOLDER" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    add_library(${target} STATIC ${ARG_SOURCES})
    set(include_dir ${CMAKE_BINARY_DIR}/include/${target})
    cmake_path(GET ARG_FOLDER PARENT_PATH parent)
    file(MAKE_DIRECTORY ${include_dir}/${parent})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${include_dir}/${ARG_FOLDER} SYMBOLIC)
    target_include_directories(${target} PUBLIC ${include_dir})
    target_link_libraries(${target} PUBLIC ${ARG_PUBLIC} PRIVATE vellumo_options ${ARG_PRIVATE})
endfunction()

# vellumo_program(<target> SOURCES ... LINKS ...)
function(vellumo_program target)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${target} ${ARG_SOURCES})
    target_link_libraries(${target} PRIVATE vellumo_options ${ARG_LINKS})
endfunction()

# vellumo_test(<target> SOURCES ... LINKS ... [LABELS ...])
#
# A GoogleTest program whose cases ctest knows one by one.
function(vellumo_test target)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;LABELS" ${ARGN})
    add_executable(${target} ${ARG_SOURCES})
    target_link_libraries(${target} PRIVATE vellumo_options ${ARG_LINKS} GTest::gmock GTest::gtest_main)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_compile_definitions(${target} PRIVATE
        VELLUMO_SOURCE_DIR="${PROJECT_SOURCE_DIR}" VELLUMO_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
    # The test framework takes longer to read than most tests to compile.
    target_precompile_headers(${target} PRIVATE <filesystem> <fstream> <gmock/gmock.h> <gtest/gtest.h>)
    gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300 LABELS "${ARG_LABELS}")
endfunction()
