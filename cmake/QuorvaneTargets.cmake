include(GNUInstallDirs)

set(CMAKE_VERIFY_INTERFACE_HEADER_SETS ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(QUORVANE_INCLUDE_DIR ${CMAKE_INSTALL_INCLUDEDIR}/QuorvaneSDK)

find_program(QUORVANE_CCACHE ccache)
mark_as_advanced(QUORVANE_CCACHE)
if(QUORVANE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${QUORVANE_CCACHE})
endif()

# What every target of ours is compiled with; nothing of it reaches those who link us.
function(quorvane_compile_options target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON
                                               WINDOWS_EXPORT_ALL_SYMBOLS ON)
    target_compile_options(
        ${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                          -Wno-missing-field-initializers -Werror -ffp-contract=off)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # Optimising, it takes two short texts that are put together for overlapping ones (GCC bug 105329), and the text
        # of an empty optional for one that is read (GCC bug 80635).
        target_compile_options(${target} PRIVATE $<$<NOT:$<CONFIG:Debug>>:-Wno-restrict;-Wno-maybe-uninitialized>)
    endif()
    if(QUORVANE_IN_BATCHES)
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
        # Of a file's neighbours these know nothing that matters.
        target_compile_options(${target} PRIVATE -Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
    endif()
    if(QUORVANE_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${QUORVANE_SANITIZE} -fno-omit-frame-pointer
                                                 -fno-sanitize-recover=all)
        target_link_options(${target} PUBLIC -fsanitize=${QUORVANE_SANITIZE})
    endif()
endfunction()

# quorvane_library(SDK BASE <dir>): the library Quorvane::SDK, whose headers are named below <dir>.
# Folders add their files with quorvane_sources().
function(quorvane_library name)
    cmake_parse_arguments(ARG "" "BASE" "" ${ARGN})
    set(target Quorvane${name})
    add_library(${target})
    add_library(Quorvane::${name} ALIAS ${target})
    quorvane_compile_options(${target})
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${name} SOVERSION 0 VERSION ${PROJECT_VERSION})
    target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${ARG_BASE})
    set_property(GLOBAL APPEND PROPERTY QUORVANE_LIBRARIES ${target})
endfunction()

# quorvane_sources(SDK PUBLIC a.h PRIVATE a.cpp b.h): files of this folder; PUBLIC ones are installed.
function(quorvane_sources name)
    cmake_parse_arguments(ARG "" "" "PUBLIC;PRIVATE" ${ARGN})
    if(ARG_PUBLIC)
        target_sources(Quorvane${name} PUBLIC FILE_SET HEADERS FILES ${ARG_PUBLIC})
    endif()
    if(ARG_PRIVATE)
        target_sources(Quorvane${name} PRIVATE ${ARG_PRIVATE})
    endif()
endfunction()

# quorvane_test(name sources... LIBRARIES libs...): a GoogleTest program whose tests CTest knows one by one.
function(quorvane_test name)
    cmake_parse_arguments(ARG "" "" "LIBRARIES;SOURCES;LABELS;ENVIRONMENT" ${ARGN})
    add_executable(${name} ${ARG_UNPARSED_ARGUMENTS} ${ARG_SOURCES})
    quorvane_compile_options(${name})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests ${PROJECT_SOURCE_DIR}/src
                                               ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE Quorvane::SDK ${ARG_LIBRARIES} GTest::gmock GTest::gtest_main)
    set(properties TIMEOUT 300)
    if(ARG_LABELS)
        list(APPEND properties LABELS ${ARG_LABELS})
    endif()
    if(ARG_ENVIRONMENT)
        list(APPEND properties ENVIRONMENT ${ARG_ENVIRONMENT})
    endif()
    gtest_discover_tests(
        ${name}
        NO_PRETTY_VALUES
        DISCOVERY_MODE PRE_TEST
        PROPERTIES ${properties})
endfunction()
