# The command's part of the installation and its package.
set(cli_documentation ${CMAKE_INSTALL_DATADIR}/doc/meshvane-cli)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME cli)

install(TARGETS meshvane-cli)
install_text(${MESHVANE_CLI_TEXTS}/meshvane-cli.1 meshvane-cli.1 ${CMAKE_INSTALL_MANDIR}/man1)
install_text(${CMAKE_CURRENT_SOURCE_DIR}/changelog changelog ${cli_documentation})
install(FILES ${MESHVANE_CLI_TEXTS}/meshvane-cli.bash
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME meshvane-cli)
install(FILES ${MESHVANE_CLI_TEXTS}/meshvane-cli.zsh
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions RENAME _meshvane-cli)
install(FILES ${MESHVANE_CLI_TEXTS}/meshvane-cli.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
install(FILES copyright ${PROJECT_SOURCE_DIR}/docs/many-files.md DESTINATION ${cli_documentation})

list(APPEND CPACK_COMPONENTS_ALL cli)
set(CPACK_DEBIAN_CLI_PACKAGE_NAME meshvane-cli)
set(CPACK_DEBIAN_CLI_PACKAGE_SUGGESTS parallel)
file(READ description-cli.txt CPACK_COMPONENT_CLI_DESCRIPTION)
