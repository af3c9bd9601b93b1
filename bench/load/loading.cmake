# The process that loads a provider: it links the provider's libraries, whether it calls them or not, and a
# platform that returns nothing, so that loading a library waits for nothing else.
set(all_of -Wl,--no-as-needed ${JSONCPP_LINK_LIBRARIES} ${GLIB_LINK_LIBRARIES} stdc++ gcc_s -Wl,--as-needed)

add_library(knows_nothing SHARED ${VENTARO_SOURCE_DIR}/tests/device/stand_in.cpp)

add_executable(load ${CMAKE_CURRENT_LIST_DIR}/load.c)
set_target_properties(load PROPERTIES C_EXTENSIONS ON)
target_include_directories(load PRIVATE ${GLIB_INCLUDE_DIRS})
target_link_libraries(load PRIVATE ${all_of} ${CMAKE_DL_LIBS})
