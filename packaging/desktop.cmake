# What desktops that follow the freedesktop conventions look for.
set(component_id org.example.meshvane)

install(FILES meshvane.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
configure_file(meshvane.metainfo.xml.in ${component_id}.metainfo.xml @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${component_id}.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/hicolor DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
install(FILES ${PROJECT_SOURCE_DIR}/resources/svg/transform-scale.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps RENAME meshvane.svg)
install(FILES meshvane.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
