# Header-only libraries for cross builds. The host's own serve, as they are the same for every system; but only they,
# through a folder of links, since the rest of /usr/include describes the host.
set(folder "${CMAKE_BINARY_DIR}/host-include")
file(MAKE_DIRECTORY "${folder}")
foreach(name IN ITEMS asio asio.hpp CLI nlohmann valijson)
  if(NOT EXISTS "/usr/include/${name}")
    message(FATAL_ERROR "/usr/include/${name} is missing")
  endif()
  file(CREATE_LINK "/usr/include/${name}" "${folder}/${name}" SYMBOLIC)
endforeach()

set(ASIO_INCLUDE_DIR "${folder}" CACHE PATH "Where asio.hpp lies")
foreach(target IN ITEMS CLI11::CLI11 nlohmann_json::nlohmann_json)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE "${folder}")
endforeach()
