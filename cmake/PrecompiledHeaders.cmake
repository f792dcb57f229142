# What makes a build of everything short. Headers that are compiled once for many files: the library's for plain
# C++, the toolkit's for windows, and both again with the test framework's. Files of a target that are compiled as
# one. Every file still includes what it uses and stands for itself: without these the tree builds as well.

# A compiler cache does more for whoever has one, and would not find its files again with these.
set(pch_wanted ON)
if(CCACHE_PROGRAM OR CMAKE_CXX_COMPILER_LAUNCHER MATCHES ccache)
    set(pch_wanted OFF)
endif()
option(KORVANE_PCH "Compile the headers of libraries once" ${pch_wanted})

# korvane_precompiled(target kind): the headers of that kind for the target. Kinds: plain, window for libraries,
# test, window_test for programs.
function(korvane_precompiled target kind)
    if(KORVANE_PCH)
        target_precompile_headers(${target} REUSE_FROM pch_${kind})
    endif()
endfunction()

# With a file's neighbours in the same unit, names of theirs count as shadowed and headers as sources.
option(KORVANE_JOINED "Compile several files of a target as one" ${KORVANE_PCH})
if(KORVANE_JOINED)
    set(CMAKE_UNITY_BUILD ON)
    set(CMAKE_UNITY_BUILD_BATCH_SIZE 8)
    target_compile_options(korvane_flags INTERFACE -Wno-shadow -Wno-subobject-linkage)
endif()

# korvane_apart(file…): files of this folder with names of their own that a neighbour has as well.
function(korvane_apart)
    set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

if(NOT KORVANE_PCH)
    return()
endif()

# With these headers GCC 12 warns of accesses within strings that are none; builds without them keep the warnings.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(korvane_flags INTERFACE -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow
        -Wno-stringop-overread)
endif()

set(plain_headers <algorithm> <array> <cstdint> <functional> <map> <memory> <optional> <set> <span> <string>
    <string_view> <utility> <vector>)
set(window_headers ${plain_headers} <QApplication> <QBoxLayout> <QCheckBox> <QComboBox> <QDialog> <QEvent> <QKeyEvent>
    <QLabel> <QLineEdit> <QListWidget> <QMainWindow> <QMdiArea> <QMdiSubWindow> <QMenu> <QMenuBar> <QPainter> <QPointer>
    <QPushButton> <QRadioButton> <QString> <QStyle> <QTimer> <QVariant>)
set(test_headers <filesystem> <fstream> <gtest/gtest.h> <random> <sstream>)

file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/pch/Empty.cpp CONTENT "// The headers are all.\n")
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/pch/Main.cpp CONTENT "int main() { return 0; }\n")
add_library(pch_plain OBJECT ${CMAKE_BINARY_DIR}/pch/Empty.cpp)
target_precompile_headers(pch_plain PRIVATE ${plain_headers})
add_library(pch_window OBJECT ${CMAKE_BINARY_DIR}/pch/Empty.cpp)
target_link_libraries(pch_window PRIVATE Qt6::Widgets)
target_precompile_headers(pch_window PRIVATE ${window_headers})
add_executable(pch_test ${CMAKE_BINARY_DIR}/pch/Main.cpp)
target_precompile_headers(pch_test PRIVATE ${plain_headers} ${test_headers})
add_executable(pch_window_test ${CMAKE_BINARY_DIR}/pch/Main.cpp)
target_link_libraries(pch_window_test PRIVATE Qt6::Widgets Qt6::Network Qt6::Test)
target_precompile_headers(pch_window_test PRIVATE ${window_headers} ${test_headers} <QSignalSpy> <QTest>)
foreach(name plain window test window_test)
    target_link_libraries(pch_${name} PRIVATE korvane_flags)
endforeach()
foreach(name test window_test)
    target_link_libraries(pch_${name} PRIVATE GTest::gtest)
    korvane_test_options(pch_${name})
endforeach()
