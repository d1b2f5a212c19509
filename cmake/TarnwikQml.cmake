# What the QML modules share. The QML files of all modules lie under one folder of the build too, so that one import
# path finds them when they are checked.
set(QT_QML_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/qml")

# tarnwik_qml_module(NAME URI … [SINGLETONS …] [QML …] [SOURCES …] [LINK …]): one QML module as a static library, whose
# files are compiled and lie in the program. A program that uses the module links NAMEplugin, names the plugin in
# Q_IMPORT_QML_PLUGIN, and adds the import path qrc:/qt/qml to its engine.
function(tarnwik_qml_module name)
  cmake_parse_arguments(ARG "" "URI" "SINGLETONS;QML;SOURCES;LINK" ${ARGN})
  set_source_files_properties(${ARG_SINGLETONS} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)

  qt_add_qml_module(${name} STATIC
    URI ${ARG_URI}
    VERSION 1.0
    RESOURCE_PREFIX /qt/qml
    QML_FILES ${ARG_SINGLETONS} ${ARG_QML}
    SOURCES ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC Qt6::Quick ${ARG_LINK})
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  tarnwik_options(${name})
endfunction()
