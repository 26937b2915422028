# SPDX-License-Identifier: MIT
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
    target_compile_options(vellumo_options INTERFACE -g1 -fsanitize=address,undefined -fno-sanitize-recover=all
        -fno-omit-frame-pointer -Wno-maybe-uninitialized)
    target_compile_options(vellumo_options INTERFACE $<$<NOT:$<BOOL:$<TARGET_PROPERTY:VELLUMO_IS_HARNESS>>>:-O1>)
    target_link_options(vellumo_options INTERFACE -fsanitize=address,undefined)
endif()
if(VELLUMO_FUZZ)
    target_compile_options(vellumo_options INTERFACE -fsanitize=fuzzer-no-link,address,undefined
        -fno-sanitize-recover=all)
    target_link_options(vellumo_options INTERFACE -fsanitize=address,undefined)
endif()

# What tests, benchmarks and fuzz targets see: they look inside.
set(VELLUMO_ALL_FOLDERS ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR})

# A view of one folder: a tree of links to its own headers and to none of its inner folders, so that an include path
# that holds the view shows exactly this folder. `name` is the folder as it stands in #include.
function(vellumo_view name directory)
    string(MAKE_C_IDENTIFIER "${name}" id)
    set(view ${CMAKE_BINARY_DIR}/include/${id})
    file(GLOB headers CONFIGURE_DEPENDS RELATIVE ${directory} ${directory}/*.h)
    file(REMOVE_RECURSE ${view})
    file(MAKE_DIRECTORY ${view}/${name})
    foreach(header IN LISTS headers)
        file(CREATE_LINK ${directory}/${header} ${view}/${name}/${header} SYMBOLIC)
    endforeach()
    set_property(GLOBAL PROPERTY VELLUMO_VIEW_${id} ${view})
endfunction()

# vellumo_see(<target> <folder> ...): adds the views of those folders to the include path.
#
# Folders come into being from the lowest to the highest, so that a name that is not known yet lies above.
function(vellumo_see target)
    foreach(folder IN LISTS ARGN)
        string(MAKE_C_IDENTIFIER "${folder}" id)
        get_property(view GLOBAL PROPERTY VELLUMO_VIEW_${id})
        if(NOT view)
            message(FATAL_ERROR "${target} names ${folder}, which lies above it or is not there")
        endif()
        target_include_directories(${target} PRIVATE ${view})
    endforeach()
endfunction()

# vellumo_see_linked(<target> <linked target> ...): the folders of those that are folders.
function(vellumo_see_linked target)
    foreach(linked IN LISTS ARGN)
        if(TARGET ${linked})
            get_target_property(folder ${linked} VELLUMO_FOLDER)
            if(folder)
                vellumo_see(${target} ${folder})
            endif()
        elseif(linked MATCHES "^vellumo_")
            message(FATAL_ERROR "${target} links ${linked}, which lies above it or is not there")
        endif()
    endforeach()
endfunction()

# vellumo_layer(<target> FOLDER <name as it stands in #include> SOURCES ... [INNER ...] [SEES ...] [PUBLIC ...] [PRIVATE ...])
#
# One folder of src/ as a static library. Its sources see the headers of this folder and of those whose targets stand
# under PUBLIC and PRIVATE, and of no other: what those see themselves is not handed on. Of an inner folder (INNER names
# this folder's own) others see the headers only when SEES names it.
function(vellumo_layer target)
    cmake_parse_arguments(ARG "" "FOLDER" "SOURCES;INNER;SEES;PUBLIC;PRIVATE" ${ARGN})
    add_library(${target} STATIC ${ARG_SOURCES})
    set_target_properties(${target} PROPERTIES VELLUMO_FOLDER ${ARG_FOLDER})
    vellumo_view(${ARG_FOLDER} ${CMAKE_CURRENT_SOURCE_DIR})
    foreach(inner IN LISTS ARG_INNER)
        vellumo_view(${ARG_FOLDER}/${inner} ${CMAKE_CURRENT_SOURCE_DIR}/${inner})
        vellumo_see(${target} ${ARG_FOLDER}/${inner})
    endforeach()
    vellumo_see(${target} ${ARG_FOLDER} ${ARG_SEES})
    vellumo_see_linked(${target} ${ARG_PUBLIC} ${ARG_PRIVATE})
    target_link_libraries(${target} PUBLIC ${ARG_PUBLIC} PRIVATE vellumo_options ${ARG_PRIVATE})
endfunction()

# vellumo_program(<target> SOURCES ... LINKS ... [SEES ...])
#
# A program; it sees folders as a layer does.
function(vellumo_program target)
    cmake_parse_arguments(ARG "" "" "SOURCES;SEES;LINKS" ${ARGN})
    add_executable(${target} ${ARG_SOURCES})
    vellumo_see(${target} ${ARG_SEES})
    vellumo_see_linked(${target} ${ARG_LINKS})
    target_link_libraries(${target} PRIVATE vellumo_options ${ARG_LINKS})
endfunction()

# vellumo_harness(<target>)
#
# A target of tests alone. It is not optimised: that would take longer than it ever runs. All of them are of one kind of
# code (the one that Qt wants), so that what is compiled ahead serves them all.
function(vellumo_harness target)
    set_target_properties(${target} PROPERTIES VELLUMO_IS_HARNESS ON)
    target_compile_options(${target} PRIVATE -O0 -fPIC)
endfunction()

# vellumo_test(<target> SOURCES ... LINKS ... [LABELS ...] [APART])
#
# A GoogleTest program whose cases ctest knows one by one. Tests see all folders. APART: its sources are always compiled
# one by one, as they have helpers of the same names, or fixtures that nobody else may see.
function(vellumo_test target)
    cmake_parse_arguments(ARG "APART" "" "SOURCES;LINKS;LABELS" ${ARGN})
    add_executable(${target} ${ARG_SOURCES})
    if(ARG_APART)
        set_target_properties(${target} PROPERTIES UNITY_BUILD OFF)
    endif()
    target_link_libraries(${target} PRIVATE vellumo_options ${ARG_LINKS} GTest::gmock GTest::gtest_main)
    target_include_directories(${target} PRIVATE ${VELLUMO_ALL_FOLDERS} ${PROJECT_SOURCE_DIR}/tests)
    target_compile_definitions(${target} PRIVATE
        VELLUMO_SOURCE_DIR="${PROJECT_SOURCE_DIR}" VELLUMO_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
    vellumo_harness(${target})
    target_precompile_headers(${target} REUSE_FROM vellumo_test_support)
    gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300 LABELS "${ARG_LABELS}")
endfunction()
