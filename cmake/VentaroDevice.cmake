# The provider for a device: libventaro.so alone, linked against the device's own platform libraries.
# docs/porting.md tells how to bring it there.

if(NOT VENTARO_DEVICE_LIBRARIES)
  message(FATAL_ERROR
    "VENTARO_DEVICE_LIBRARIES is empty; name the device's libraries that have the platform symbols")
endif()

add_subdirectory(src)
target_link_libraries(ventaro_provider PRIVATE ${VENTARO_DEVICE_LIBRARIES})
# A symbol that the device lacks is an error here, not when the TV loads the library.
target_link_options(ventaro_provider PRIVATE -Wl,--no-undefined)

# The catalogues, for those who package the device's files: cmake --build ... --target catalogues
add_subdirectory(res EXCLUDE_FROM_ALL)
