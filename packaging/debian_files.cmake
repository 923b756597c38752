# Run by CPack over the files of the packages: compresses manual pages, adds licence and changelogs, and leads from
# where Debian's users look to the manual and the examples.
cmake_minimum_required(VERSION 3.25)
find_program(GZIP gzip REQUIRED)

execute_process(COMMAND date -R -u -d ${CPACK_QUILLON_RELEASE_DATE}
  OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

function(compress)
  execute_process(COMMAND ${GZIP} -9nf ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component ${CPACK_COMPONENTS_ALL})
  set(package ${CPACK_QUILLON_PACKAGE_${component}})
  set(usr ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr)
  set(doc ${usr}/share/doc/${package})
  file(COPY ${CPACK_QUILLON_SOURCE}/packaging/copyright DESTINATION ${doc} NO_SOURCE_PERMISSIONS)
  file(COPY_FILE ${CPACK_QUILLON_SOURCE}/CHANGELOG.md ${doc}/changelog)
  file(WRITE ${doc}/changelog.Debian
    "${package} (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) stable; urgency=medium\n\n"
    "  * Release ${CPACK_PACKAGE_VERSION}; changelog.gz tells what is new.\n\n"
    " -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")
  file(GLOB pages ${usr}/share/man/man1/*.1)
  compress(${doc}/changelog ${doc}/changelog.Debian ${pages})
endforeach()

set(doc ${CPACK_TEMPORARY_DIRECTORY}/data/usr/share/doc/quillon-data)
file(CREATE_LINK ../../quillon/manual ${doc}/html SYMBOLIC)
file(CREATE_LINK ../../quillon/examples ${doc}/examples SYMBOLIC)
