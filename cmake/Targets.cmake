# What several folders need for their targets.

include(GoogleTest)

# The prefix must exist, with the stand-ins entered in it, before a program that needs them runs.
add_custom_target(prefix
    COMMAND ${CMAKE_SOURCE_DIR}/tools/make-prefix ${CMAKE_BINARY_DIR}/wineprefix ${CMAKE_BINARY_DIR}/bin
    COMMENT "Preparing the Wine prefix"
    VERBATIM)

# Google Test from Debian's sources, built once for Windows.
function(varden_provide_googletest)
    if(TARGET gtest)
        return()
    endif()
    set(INSTALL_GTEST OFF)
    set(BUILD_GMOCK OFF)
    set(gtest_disable_pthreads ON)
    add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
endfunction()

# varden_add_tests(NAME sources... LIBRARIES libs...): a test program whose cases CTest lists one by one.
function(varden_add_tests name)
    cmake_parse_arguments(arg "" "" "LIBRARIES" ${ARGN})
    varden_provide_googletest()
    add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE gtest_main ${arg_LIBRARIES})
    add_dependencies(${name} prefix)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 300 PROPERTIES TIMEOUT 300)
endfunction()
