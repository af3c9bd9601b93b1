# How this project compiles its targets.

include(CheckCXXCompilerFlag)
include(CheckPIESupported)

# Programs, too, are loaded at an address that nobody can guess.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
check_pie_supported()

# -fno-gnu-unique: a unique symbol would keep a library loaded after dlclose.
check_cxx_compiler_flag(-fno-gnu-unique VENTARO_HAS_NO_GNU_UNIQUE)
# Only x86 has it.
check_cxx_compiler_flag(-fcf-protection VENTARO_HAS_CF_PROTECTION)
check_cxx_compiler_flag(-fstack-clash-protection VENTARO_HAS_STACK_CLASH_PROTECTION)

# Files of any size and inode number on 32-bit targets too.
add_compile_definitions(_FILE_OFFSET_BITS=64)

function(ventaro_compile_options target)
  # The counts of the lines have to find these again.
  if(VENTARO_COVERAGE)
    set(map macro)
  else()
    set(map file)
  endif()
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wcast-qual -Wformat=2
    -Wundef -Wvla
    # gcc 12 sees overlapping copies where a literal and a string are joined, and there are none.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast>
    $<$<BOOL:${VENTARO_WERROR}>:-Werror>
    -fvisibility=hidden
    $<$<COMPILE_LANGUAGE:CXX>:-fvisibility-inlines-hidden>
    $<$<AND:$<COMPILE_LANGUAGE:CXX>,$<BOOL:${VENTARO_HAS_NO_GNU_UNIQUE}>>:-fno-gnu-unique>
    -fstack-protector-strong
    $<$<BOOL:${VENTARO_HAS_STACK_CLASH_PROTECTION}>:-fstack-clash-protection>
    $<$<BOOL:${VENTARO_HAS_CF_PROTECTION}>:-fcf-protection>
    # No path of the building machine goes into the binaries.
    -f${map}-prefix-map=${CMAKE_SOURCE_DIR}/=
    -f${map}-prefix-map=${CMAKE_BINARY_DIR}/=)
  target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
  target_link_options(${target} PRIVATE -Wl,-z,relro,-z,now,-z,noexecstack)
  if(VENTARO_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${VENTARO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${VENTARO_SANITIZE})
  else()
    # Some compilers define it themselves.
    target_compile_options(${target} PRIVATE $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>)
  endif()
endfunction()

# Removes what matches `pattern` in the build tree's share folder and is none of the files or folders
# that are given: it was built from a source that is gone.
function(ventaro_remove_stale pattern)
  file(GLOB stale ${VENTARO_SHARE_DIR}/${pattern})
  list(REMOVE_ITEM stale ${ARGN})
  if(stale)
    file(REMOVE_RECURSE ${stale})
  endif()
endfunction()

# Copies a source folder's data files into the build tree's share folder, and installs them there as
# part of that component.
function(ventaro_share_files target component destination)
  set(outputs)
  foreach(file IN LISTS ARGN)
    get_filename_component(name ${file} NAME)
    set(output ${VENTARO_SHARE_DIR}/${destination}/${name})
    add_custom_command(OUTPUT ${output}
      COMMAND ${CMAKE_COMMAND} -E copy ${file} ${output}
      DEPENDS ${file} VERBATIM)
    list(APPEND outputs ${output})
  endforeach()
  ventaro_remove_stale("${destination}/*.json" ${outputs})
  add_custom_target(${target} ALL DEPENDS ${outputs})
  install(FILES ${ARGN} DESTINATION ${VENTARO_INSTALL_SHARE_DIR}/${destination} COMPONENT ${component})
endfunction()
