# What every target of this tree shares: the language level, the warnings, the sanitizers, and the
# helpers that make a target of a folder.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()
set(CMAKE_CXX_FLAGS_RELEASE "-O2")
# An index beyond a container ends the program, or the tool's process, instead of reading on in foreign memory.
add_compile_definitions(_GLIBCXX_ASSERTIONS)

option(KORVANE_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE_PROGRAM})
endif()

add_library(korvane_flags INTERFACE)
target_compile_options(korvane_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
if(KORVANE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# Everything that a fuzz program of tests/fuzz links is watched, not its own file alone.
option(KORVANE_FUZZ "Build the fuzz programs (clang)" OFF)
if(KORVANE_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined)
    add_link_options(-fsanitize=address,undefined)
endif()

# korvane_library(name [SOURCES file…] [LINKS target…])
# A static library. Without SOURCES it takes the .cpp files of the folder.
function(korvane_library name)
    cmake_parse_arguments(A "" "" "SOURCES;LINKS" ${ARGN})
    if(NOT A_SOURCES)
        file(GLOB A_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    endif()
    if(A_SOURCES)
        add_library(${name} STATIC ${A_SOURCES})
        target_link_libraries(${name} PUBLIC ${A_LINKS} PRIVATE korvane_flags)
        if("${A_LINKS}" MATCHES "Qt6::Widgets")
            korvane_precompiled(${name} window)
        else()
            korvane_precompiled(${name} plain)
        endif()
    else()
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE ${A_LINKS})
    endif()
endfunction()

# korvane_room(name [LINKS target…])
# A subsystem: its logic as target `name`, plain C++ over `session`; its windows (frm*.cpp and what lies
# in windows/) as target `name_windows` on Qt.
function(korvane_room name)
    cmake_parse_arguments(A "" "" "LINKS" ${ARGN})
    file(GLOB logic CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    file(GLOB windows CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/frm*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/windows/*.cpp
                                        ${CMAKE_CURRENT_SOURCE_DIR}/*.ui)
    if(windows)
        list(REMOVE_ITEM logic ${windows})
    endif()
    if(logic)
        korvane_library(${name} SOURCES ${logic} LINKS session ${A_LINKS})
    else()
        korvane_library(${name} LINKS session ${A_LINKS})
    endif()
    if(windows)
        korvane_library(${name}_windows SOURCES ${windows} LINKS ${name} platform_qt Qt6::Widgets)
        set_target_properties(${name}_windows PROPERTIES AUTOMOC ON AUTOUIC ON)
    endif()
endfunction()

# The last -O counts: what is tested stays optimised, the tests themselves compile faster. The toolkit wants
# -fPIC, and the precompiled headers are for tests with it and without.
function(korvane_test_options target)
    target_compile_options(${target} PRIVATE -fPIC $<$<CONFIG:Release>:-O1>)
endfunction()

set(test_seconds 110)
if(KORVANE_SANITIZE)
    set(test_seconds 600)
endif()

# korvane_test(name [QT] [SOURCES file…] [LINKS target…])
# A GoogleTest program `test_name` of the folder's .cpp files, each of its tests known to ctest. With QT its
# main makes the application object first.
function(korvane_test name)
    cmake_parse_arguments(A "QT" "" "SOURCES;LINKS" ${ARGN})
    if(NOT A_SOURCES)
        file(GLOB A_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    endif()
    add_executable(test_${name} ${A_SOURCES})
    if(A_QT)
        target_link_libraries(test_${name} PRIVATE ${A_LINKS} test_qt_main korvane_flags)
        korvane_precompiled(test_${name} window_test)
    else()
        target_link_libraries(test_${name} PRIVATE ${A_LINKS} GTest::gtest GTest::gtest_main korvane_flags)
        korvane_precompiled(test_${name} test)
    endif()
    korvane_test_options(test_${name})
    gtest_discover_tests(test_${name} TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 120
        PROPERTIES TIMEOUT ${test_seconds} ENVIRONMENT QT_QPA_PLATFORM=offscreen
                   ENVIRONMENT_MODIFICATION XDG_STATE_HOME=set:${CMAKE_BINARY_DIR}/state)
    # The cases that look for cut texts, once more on displays of other scales.
    foreach(source ${A_SOURCES})
        file(STRINGS ${source} forms REGEX "^TEST_F\\(.*CaptionsInWhole\\)")
        foreach(scale 1.5 2)
            if(forms AND NOT TEST ${name}.AtScale${scale})
                add_test(NAME ${name}.AtScale${scale} COMMAND test_${name} --gtest_filter=*CaptionsInWhole)
                set_tests_properties(${name}.AtScale${scale} PROPERTIES TIMEOUT ${test_seconds}
                    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_SCALE_FACTOR=${scale}")
            endif()
        endforeach()
    endforeach()
endfunction()

include(GoogleTest)

# korvane_test_paths(file NAME="path" …): paths of the build for the test sources that use them, and for no
# other: a compiler cache sees the rest as the same in every checkout.
function(korvane_test_paths files)
    set_source_files_properties(${files} PROPERTIES COMPILE_DEFINITIONS "${ARGN}")
endfunction()
