# What others get: headers, libraries and programs in an install prefix, and for both CMake and pkg-config a description
# of the installed libraries as well as of those in this build tree.
include(CMakePackageConfigHelpers)

get_property(QUORVANE_LIBRARIES GLOBAL PROPERTY QUORVANE_LIBRARIES)
list(TRANSFORM QUORVANE_LIBRARIES REPLACE "^Quorvane" "" OUTPUT_VARIABLE QUORVANE_COMPONENTS)

# What a linked target is called by find_package and by pkg-config. Programs that link a shared library of ours need
# none of it; those that link a static one need all of it.
set(quorvane_known_targets
    simdjson::simdjson simdjson simdjson
    CURL::libcurl CURL libcurl
    SQLite::SQLite3 SQLite3 sqlite3
    OpenSSL::Crypto OpenSSL libcrypto
    Qt6::Core Qt6Core Qt6Core
    Qt6::Gui Qt6Gui Qt6Gui
    Qt6::Quick Qt6Quick Qt6Quick
    Qt6::Multimedia Qt6Multimedia Qt6Multimedia
    Qt6::Svg Qt6Svg Qt6Svg
    ZXing::ZXing ZXing zxing
    Qt6::Network Qt6Network Qt6Network
    Qt6::Positioning Qt6Positioning Qt6Positioning
    Qt6::Sensors Qt6Sensors Qt6Sensors
    Qt6::DBus Qt6DBus Qt6DBus)

# quorvane_parts(<component>): sets <component>_parts (components of ours), _packages and _pkgconfig in the caller.
function(quorvane_parts component)
    set(parts)
    set(packages)
    set(pkgconfig)
    get_target_property(linked Quorvane${component} LINK_LIBRARIES)
    foreach(library IN LISTS linked)
        list(FIND quorvane_known_targets "${library}" known)
        if(library MATCHES "^Quorvane::(.*)$")
            list(APPEND parts ${CMAKE_MATCH_1})
        elseif(known GREATER_EQUAL 0)
            math(EXPR package "${known} + 1")
            math(EXPR module "${known} + 2")
            list(GET quorvane_known_targets ${package} package)
            list(GET quorvane_known_targets ${module} module)
            list(APPEND packages ${package})
            list(APPEND pkgconfig ${module})
        elseif(library)
            message(FATAL_ERROR "Quorvane${component} links ${library}: QuorvaneInstall.cmake does not know its package")
        endif()
    endforeach()
    set(${component}_parts "${parts}" PARENT_SCOPE)
    set(${component}_packages "${packages}" PARENT_SCOPE)
    set(${component}_pkgconfig "${pkgconfig}" PARENT_SCOPE)
endfunction()

set(quorvane_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Quorvane)
set(quorvane_build_package_dir ${PROJECT_BINARY_DIR}/lib/cmake/Quorvane)
file(RELATIVE_PATH quorvane_lib_from_bin /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
file(RELATIVE_PATH quorvane_prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" quorvane_prefix_from_pc "${quorvane_prefix_from_pc}")

# quorvane_pkgconfig(<component> <file> <libdir> <cflags...>): one .pc file of a component.
function(quorvane_pkgconfig component file libdir)
    list(JOIN ARGN " " cflags)
    list(TRANSFORM ${component}_parts TOLOWER OUTPUT_VARIABLE requires)
    list(TRANSFORM requires PREPEND quorvane-)
    if(NOT BUILD_SHARED_LIBS)
        list(APPEND requires ${${component}_pkgconfig})
    endif()
    list(JOIN requires ", " requires)
    if(NOT BUILD_SHARED_LIBS AND component STREQUAL "SDK")
        set(threads " -pthread")
    endif()
    file(GENERATE OUTPUT ${file} CONTENT "prefix=\${pcfiledir}/${quorvane_prefix_from_pc}

Name: quorvane-${component}
Description: ${PROJECT_DESCRIPTION} (${component})
Version: ${PROJECT_VERSION}
Requires: ${requires}
Cflags: ${cflags}
Libs: -L${libdir} -lQuorvane${component}${threads}
")
endfunction()

foreach(component IN LISTS QUORVANE_COMPONENTS)
    set(target Quorvane${component})
    quorvane_parts(${component})
    string(APPEND quorvane_component_needs "set(quorvane_${component}_parts ${${component}_parts})\n"
                                           "set(quorvane_${component}_packages ${${component}_packages})\n")
    # Nothing but the kind of library differs between a shared and a static build, so that both share compiled objects.
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN" DEFINE_SYMBOL "")
    install(
        TARGETS ${target}
        EXPORT ${target}Targets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        FILE_SET HEADERS DESTINATION ${QUORVANE_INCLUDE_DIR})
    install(
        EXPORT ${target}Targets
        NAMESPACE Quorvane::
        DESTINATION ${quorvane_package_dir})
    export(
        EXPORT ${target}Targets
        NAMESPACE Quorvane::
        FILE ${quorvane_build_package_dir}/${target}Targets.cmake)

    string(TOLOWER quorvane-${component}.pc pc)
    quorvane_pkgconfig(${component} ${PROJECT_BINARY_DIR}/installed/pkgconfig/${pc} "\${prefix}/${CMAKE_INSTALL_LIBDIR}"
                       "-I\${prefix}/${QUORVANE_INCLUDE_DIR}")
    quorvane_pkgconfig(${component} ${PROJECT_BINARY_DIR}/lib/pkgconfig/${pc} $<TARGET_FILE_DIR:${target}>
                       "-I${PROJECT_SOURCE_DIR}/src" "-I${PROJECT_SOURCE_DIR}")
    install(FILES ${PROJECT_BINARY_DIR}/installed/pkgconfig/${pc} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

configure_package_config_file(
    ${CMAKE_CURRENT_LIST_DIR}/QuorvaneConfig.cmake.in ${quorvane_build_package_dir}/QuorvaneConfig.cmake
    INSTALL_DESTINATION ${quorvane_package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${quorvane_build_package_dir}/QuorvaneConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${quorvane_build_package_dir}/QuorvaneConfig.cmake
              ${quorvane_build_package_dir}/QuorvaneConfigVersion.cmake DESTINATION ${quorvane_package_dir})

foreach(program quorvane quorvane-sandbox)
    if(TARGET ${program})
        set_target_properties(${program} PROPERTIES INSTALL_RPATH "$ORIGIN/${quorvane_lib_from_bin}")
        install(TARGETS ${program} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    endif()
endforeach()
