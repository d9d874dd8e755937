# The three link borders. A file's folder decides its library, so that no list of files has to be kept.

set(core_folders state store coordinates calibration objects plansquares view hand edit tools import exchange analysis printing maps)

file(GLOB platform_sources CONFIGURE_DEPENDS src/platform/*.cpp src/workbook/*.cpp)
set(core_sources)
foreach(folder ${core_folders})
  file(GLOB found CONFIGURE_DEPENDS src/${folder}/*.cpp)
  list(APPEND core_sources ${found})
endforeach()
file(GLOB_RECURSE window_sources CONFIGURE_DEPENDS src/windows/*.cpp src/windows/*.h src/windows/*.ui src/windows/*.qrc)

add_library(flurax_platform STATIC ${platform_sources})
target_link_libraries(flurax_platform PUBLIC flurax_options Qt6::Core Qt6::Gui SQLite::SQLite3
                      PRIVATE PkgConfig::LIBZIP ZLIB::ZLIB PkgConfig::PROJ pugixml::pugixml)
target_precompile_headers(flurax_platform PRIVATE <QString> <QList> <QHash> <QPainter> <QImage> <vector> <functional>)

add_library(flurax_core STATIC ${core_sources})
target_link_libraries(flurax_core PUBLIC flurax_platform)
target_compile_definitions(flurax_core PRIVATE FLURAX_VERSION="${PROJECT_VERSION}")
target_precompile_headers(flurax_core REUSE_FROM flurax_platform)

add_library(flurax_windows STATIC ${window_sources})
set_target_properties(flurax_windows PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
target_link_libraries(flurax_windows PUBLIC flurax_core Qt6::Widgets Qt6::PrintSupport Qt6::Svg Qt6::Charts)
target_precompile_headers(flurax_windows PRIVATE <QString> <QList> <QHash> <QWidget> <QDialog> <QPushButton> <QLabel> <QLineEdit>)

if(EXISTS ${CMAKE_SOURCE_DIR}/src/main.cpp)
  add_executable(flurax src/main.cpp src/prepare_folder.cpp)
  target_link_libraries(flurax PRIVATE flurax_windows)
  target_compile_definitions(flurax PRIVATE FLURAX_DATA_DIR="${CMAKE_BINARY_DIR}/data")
endif()
# The main program finds its helping programs beside itself.
if(EXISTS ${CMAKE_SOURCE_DIR}/src/kalibrix.cpp)
  add_executable(Kalibrix src/kalibrix.cpp src/prepare_folder.cpp)
  target_link_libraries(Kalibrix PRIVATE flurax_windows)
  target_compile_definitions(Kalibrix PRIVATE FLURAX_DATA_DIR="${CMAKE_BINARY_DIR}/data")
endif()
if(EXISTS ${CMAKE_SOURCE_DIR}/src/tabbridge.cpp)
  # Its name is the one that the program looks for.
  add_executable(TabBridge src/tabbridge.cpp src/prepare_folder.cpp)
  target_link_libraries(TabBridge PRIVATE flurax_windows)
  target_compile_definitions(TabBridge PRIVATE FLURAX_DATA_DIR="${CMAKE_BINARY_DIR}/data")
endif()
if(EXISTS ${CMAKE_SOURCE_DIR}/src/batch.cpp)
  add_executable(flurax-batch src/batch.cpp src/batch_calibration.cpp src/batch_exit.cpp src/batch_import.cpp
                 src/batch_order.cpp src/batch_sheet.cpp src/batch_work.cpp)
  target_include_directories(flurax-batch PRIVATE ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(flurax-batch PRIVATE flurax_core)
  target_compile_definitions(flurax-batch PRIVATE FLURAX_DATA_DIR="${CMAKE_BINARY_DIR}/data")
endif()
# Reads tables of the old engine for the other programs, so that what its library does to them stays outside.
add_executable(flurax-alttabelle src/old_table.cpp src/old_table_file.cpp src/old_table_values.cpp
               src/old_table_write.cpp)
target_include_directories(flurax-alttabelle PRIVATE ${CMAKE_SOURCE_DIR}/src)
target_link_libraries(flurax-alttabelle PRIVATE flurax_core PkgConfig::MDB)
add_dependencies(flurax flurax-alttabelle)
add_dependencies(flurax-batch flurax-alttabelle)
if(EXISTS ${CMAKE_SOURCE_DIR}/tools/CMakeLists.txt)
  add_subdirectory(tools)
endif()
