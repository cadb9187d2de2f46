# Precompiled headers: what nearly every source of a kind reads before its own. They only save time: each source includes
# what it uses, and the presets that do without them see to that. An optimised build does without, because GCC 12 then warns
# of what it finds inlined from headers of the library.
option(ADMINUTR_PCH "Compile with precompiled headers" OFF)

set(ADMINUTR_PCH_BASE
  <algorithm> <array> <charconv> <chrono> <cmath> <cstdint> <deque> <filesystem> <fstream> <functional> <limits> <map>
  <memory> <optional> <ostream> <random> <span> <sstream> <stdexcept> <string> <string_view> <utility> <variant> <vector>)
set(ADMINUTR_PCH_QT
  <QAction> <QApplication> <QCheckBox> <QComboBox> <QDateTimeEdit> <QDialog> <QFormLayout> <QGridLayout> <QGroupBox>
  <QHBoxLayout> <QHeaderView> <QKeyEvent> <QLabel> <QLineEdit> <QMainWindow> <QMenu> <QMenuBar> <QMessageBox>
  <QPushButton> <QRadioButton> <QSettings> <QStackedLayout> <QStatusBar> <QTabWidget> <QTimer> <QToolBar> <QToolButton>
  <QTreeView> <QVBoxLayout>)
set(ADMINUTR_PCH_PRUEBAS <gtest/gtest.h> <gmock/gmock.h>)

# adminutr_precompilados(NAME CABECERAS headers... USA targets...): a set of headers that many targets share. It is compiled
# with no definition but those of USA: a target that shares it needs the same ones, and may have more.
function(adminutr_precompilados nombre)
  if(NOT ADMINUTR_PCH)
    return()
  endif()
  cmake_parse_arguments(A "" "" "CABECERAS;USA" ${ARGN})
  set(vacio ${CMAKE_BINARY_DIR}/vacio.cpp)
  if(NOT EXISTS ${vacio})
    file(WRITE ${vacio} "")
  endif()
  add_library(${nombre} OBJECT ${vacio})
  target_link_libraries(${nombre} PRIVATE adminutr_opciones ${A_USA})
  target_precompile_headers(${nombre} PRIVATE ${A_CABECERAS})
endfunction()

# adminutr_precompilar(TARGET NAME): compiles a target with a set of adminutr_precompilados.
function(adminutr_precompilar destino nombre)
  if(ADMINUTR_PCH)
    target_precompile_headers(${destino} REUSE_FROM ${nombre})
  endif()
endfunction()
