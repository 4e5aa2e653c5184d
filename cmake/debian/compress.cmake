# Debian's packages hold their man pages and changelogs compressed. CPack runs this on what it is
# about to pack.
execute_process(COMMAND
  find ${CPACK_TEMPORARY_INSTALL_DIRECTORY} ( -path */share/man/* -o -name changelog.Debian )
    -type f -exec gzip -9n {} +
  COMMAND_ERROR_IS_FATAL ANY)
