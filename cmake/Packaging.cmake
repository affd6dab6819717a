# What `cmake --install` and `cpack` put where. The programs find their data in share/corvane by their own place, so any
# prefix will do, and an installed tree may be moved.
set(CORVANE_PROGRAMS corvane-cli)
if(CORVANE_WINDOWS)
  list(APPEND CORVANE_PROGRAMS corvane)
endif()

install(TARGETS ${CORVANE_PROGRAMS} RUNTIME DESTINATION bin)
if(CORVANE_HAVE_GDAL)
  install(TARGETS corvane_gdal LIBRARY DESTINATION lib/corvane)
endif()
install(DIRECTORY data/ DESTINATION share/corvane)
install(FILES README.md packaging/copyright DESTINATION share/doc/corvane)
install(DIRECTORY docs/ DESTINATION share/doc/corvane/docs)
install(FILES packaging/corvane.bash DESTINATION share/bash-completion/completions RENAME corvane-cli)

# install_compressed(FILE DESTINATION folder [RENAME name]): gzipped without its date, as packages want manuals.
find_program(GZIP_PROGRAM gzip)
function(install_compressed file)
  cmake_parse_arguments(ARG "" "DESTINATION;RENAME" "" ${ARGN})
  get_filename_component(name "${file}" NAME)
  if(ARG_RENAME)
    set(name "${ARG_RENAME}")
  endif()
  if(NOT GZIP_PROGRAM)
    install(FILES "${file}" DESTINATION "${ARG_DESTINATION}" RENAME "${name}")
    return()
  endif()
  set(compressed "${CMAKE_BINARY_DIR}/packaging/${name}.gz")
  add_custom_command(OUTPUT "${compressed}"
    COMMAND "${GZIP_PROGRAM}" -9nc "${CMAKE_SOURCE_DIR}/${file}" > "${compressed}"
    DEPENDS "${CMAKE_SOURCE_DIR}/${file}" VERBATIM)
  add_custom_target(compress_${name} ALL DEPENDS "${compressed}")
  install(FILES "${compressed}" DESTINATION "${ARG_DESTINATION}")
endfunction()
file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/packaging")
install_compressed(packaging/corvane-cli.1 DESTINATION share/man/man1)
install_compressed(packaging/changelog DESTINATION share/doc/corvane)

if(CORVANE_WINDOWS)
  install_compressed(packaging/corvane.1 DESTINATION share/man/man1)
  install(FILES packaging/corvane.bash DESTINATION share/bash-completion/completions RENAME corvane)
  install(FILES packaging/org.corvane.Corvane.desktop DESTINATION share/applications)
  install(FILES packaging/org.corvane.Corvane.metainfo.xml DESTINATION share/metainfo)
  install(FILES packaging/corvane.svg DESTINATION share/icons/hicolor/scalable/apps)
  foreach(size IN ITEMS 16 24 32 48 64 128 256)
    install(FILES packaging/icons/corvane-${size}.png DESTINATION share/icons/hicolor/${size}x${size}/apps
      RENAME corvane.png)
  endforeach()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME corvane)
set(CPACK_PACKAGE_VENDOR "The Corvane developers")
set(CPACK_PACKAGE_CONTACT "The Corvane developers <maintainers@corvane.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "air traffic control radar for flight simulator sessions")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS fonts-dejavu-core)
if(Qt6TextToSpeech_FOUND)
  string(APPEND CPACK_DEBIAN_PACKAGE_RECOMMENDS ", qt6-speech-flite-plugin | qt6-speech-speechd-plugin")
endif()
if(CORVANE_HAVE_GDAL)
  # Only corvane-gdal.so needs it, and the programs do without that.
  string(APPEND CPACK_DEBIAN_PACKAGE_RECOMMENDS ", ${CORVANE_GDAL_PACKAGE}")
  set(CPACK_CORVANE_RECOMMENDED_LIBRARY ${CORVANE_GDAL_PACKAGE})
  set(CPACK_PROJECT_CONFIG_FILE "${CMAKE_CURRENT_SOURCE_DIR}/packaging/CPackProject.cmake")
  set(CPACK_CORVANE_SHLIBDEPS "${CMAKE_CURRENT_SOURCE_DIR}/packaging/shlibdeps")
endif()
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"A radar scope for multiplayer sessions of Microsoft Flight Simulator 2002.
 Join a running session as its controller, see the pilots as targets over a
 map made from the simulator's own scenery, chat with them, keep their flight
 plans and measure distances and courses. A practice session and a
 demonstration world need no simulator.")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
