# The Debian package holds what `cmake --install` puts. tools/package calls cpack with the packages recommended beside it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME talnik)
set(CPACK_PACKAGE_CONTACT "Talník maintainers <maintainers@talnik.example>")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${TALNIK_PAGES})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "brltty, orca, pipewire-pulse | pulseaudio")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_PACKAGE_DESCRIPTION "Talník keeps appointments and rings their alarms. It is used from the
keyboard and by ear: every day, task, field and message is spoken through
speech-dispatcher, shown on a Braille line, and stands on the screen in large
letters. It stays in the notification area. The interface is Czech.")

# The version of a package is read from its changelog.
file(STRINGS ${PROJECT_SOURCE_DIR}/data/debian/changelog newest LIMIT_COUNT 1)
if(NOT newest MATCHES "^talnik \\(${PROJECT_VERSION}\\)")
  message(FATAL_ERROR "data/debian/changelog does not begin with version ${PROJECT_VERSION}")
endif()
include(CPack)
