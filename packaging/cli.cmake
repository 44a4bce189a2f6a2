# The command with its manual page, completions and documentation.
set(MESHVANE_ZSH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions CACHE STRING
    "Where the system's zsh looks for completions; outside Debian mostly share/zsh/site-functions")

set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME cli)
install(TARGETS meshvane-cli)
install(FILES ${MESHVANE_CLI_TEXTS}/meshvane-cli.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${MESHVANE_CLI_TEXTS}/meshvane-cli.bash
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME meshvane-cli)
install(FILES ${MESHVANE_CLI_TEXTS}/meshvane-cli.zsh DESTINATION ${MESHVANE_ZSH_COMPLETIONS} RENAME _meshvane-cli)
install(FILES ${MESHVANE_CLI_TEXTS}/meshvane-cli.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
install(FILES ${PROJECT_SOURCE_DIR}/docs/many-files.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/meshvane-cli)
