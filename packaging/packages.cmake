# The Debian packages that cpack makes of the components, for the architecture of the build.

set(VENTARO_PACKAGE_MAINTAINER "ventaro developers <ventaro@packages.invalid>" CACHE STRING
  "Who answers for the packages: name and mail address")

if(CMAKE_CROSSCOMPILING AND NOT EXISTS "${CMAKE_SYSROOT}/ventaro-sysroot/shlibs")
  message(STATUS "No packages: only a sysroot made by scripts/sysroot tells what they depend on")
  return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ventaro)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_COMPONENTS_ALL provider platform menu dev)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
if(CMAKE_CROSSCOMPILING)
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${VENTARO_ARCHITECTURE})
endif()
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${VENTARO_PACKAGE_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SOURCE ventaro)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
# Each package has its own summary as the first line of its description.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")

configure_here(changelog changelog)
compress(${CMAKE_CURRENT_BINARY_DIR}/changelog changelog.gz)

# What these packages need of each other, in exactly this version.
set(same_version "(= ${PROJECT_VERSION})")

# The Debian packages of these libraries, as the sysroot's own packages tell: on this machine there is
# nobody to ask about a foreign architecture's.
function(debian_dependencies variable)
  set(packages)
  foreach(library IN LISTS ARGN)
    string(REPLACE "+" "\\+" name ${library})
    file(STRINGS ${CMAKE_SYSROOT}/ventaro-sysroot/shlibs line REGEX "^lib${name} " LIMIT_COUNT 1)
    if(NOT line)
      message(FATAL_ERROR "No package of the sysroot has the library \"${library}\"")
    endif()
    string(REGEX MATCH "^[^ ]+ [^ ]+ (.*)" matched ${line})
    list(APPEND packages ${CMAKE_MATCH_1})
  endforeach()
  list(REMOVE_DUPLICATES packages)
  set(${variable} ${packages} PARENT_SCOPE)
endfunction()

# package(<component> SECTION <section> SUMMARY <line> DESCRIPTION <text>
#         [DEPENDS <what cannot be seen from its binaries>] [LINKS <libraries its binaries link to>])
function(package component)
  cmake_parse_arguments(package "" "SECTION;SUMMARY;DESCRIPTION;DEPENDS" "LINKS" ${ARGN})
  string(TOUPPER ${component} prefix)
  set(prefix CPACK_DEBIAN_${prefix})
  set(name ventaro-${component})
  set(depends ${package_DEPENDS})
  if(package_LINKS AND CMAKE_CROSSCOMPILING)
    debian_dependencies(linked ${package_LINKS})
    list(APPEND depends ${linked})
  endif()
  list(JOIN depends ", " depends)
  set(${prefix}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(${prefix}_PACKAGE_SECTION ${package_SECTION} PARENT_SCOPE)
  set(${prefix}_DESCRIPTION "${package_SUMMARY}\n${package_DESCRIPTION}" PARENT_SCOPE)
  set(${prefix}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
  if(package_LINKS AND NOT CMAKE_CROSSCOMPILING)
    set(${prefix}_PACKAGE_SHLIBDEPS ON PARENT_SCOPE)
  endif()
  install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/copyright
    ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
endfunction()

set(base_libraries c gcc_s stdc++ jsoncpp glib-2.0)

package(provider SECTION libs
  SUMMARY "network menu provider of a TV's settings menu"
  DESCRIPTION "A plug-in for a menu framework: it answers, menu key by menu key, for the
names, help texts, icons, values, option lists, confirmation boxes and
visibility of a TV's network menu. With its message catalogues."
  LINKS ${base_libraries})

package(platform SECTION libs
  SUMMARY "host platform for a TV's network menu provider"
  DESCRIPTION "The platform symbols that the provider calls, on any Linux machine: a
configuration store, feature flags by product, a simulated network and logs.
With the products, their factory settings and the scenarios of the simulated
network."
  LINKS ${base_libraries} lmdb spdlog fmt)

package(menu SECTION utils
  SUMMARY "network menu of a TV, as a program"
  DESCRIPTION "The menu host program ventaro: it loads the network menu provider and is the
menu. It shows items, asks, sets and connects, for people and as JSON for
programs."
  DEPENDS "ventaro-provider ${same_version}, ventaro-platform ${same_version}"
  LINKS ${base_libraries} edit)

package(dev SECTION libdevel
  SUMMARY "development files for a TV's network menu provider"
  DESCRIPTION "The ABI between a menu framework and the network menu provider as a C header,
and the headers of the host platform, with an example, pkg-config files and
a CMake package."
  DEPENDS "ventaro-provider ${same_version}, ventaro-platform ${same_version}, libjsoncpp-dev, pkg-config")

include(CPack)
