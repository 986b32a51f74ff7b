# Run by cpack after installing the files and before packing them: adds what only a Debian package
# has. The changelog's date is that of the sources, which ./dev passes in SOURCE_DATE_EPOCH, so the
# same sources give the same package.

set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY})
set(documents ${root}/usr/share/doc/kestrune)

set(seconds $ENV{SOURCE_DATE_EPOCH})
if(NOT seconds)
  string(TIMESTAMP seconds "%s" UTC)
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C date --utc --rfc-email --date=@${seconds}
  OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(version ${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
file(WRITE ${documents}/changelog.Debian
"kestrune (${version}) unstable; urgency=medium

  * Version ${CPACK_PACKAGE_VERSION}, whose changes are in changelog.gz.

 -- ${CPACK_DEBIAN_PACKAGE_MAINTAINER}  ${date}
")

foreach(file ${documents}/changelog ${documents}/changelog.Debian ${root}/usr/share/man/man1/kestrune.1)
  execute_process(COMMAND gzip --best --no-name ${file} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
