# One place for what every target of the project shares: the include root, the warnings, and the floating-point
# rules (results are compared digit for digit, so no contraction into fused operations and no fast-math).

add_library(corvane_options INTERFACE)
target_include_directories(corvane_options INTERFACE "${CMAKE_SOURCE_DIR}/src")
target_compile_options(corvane_options INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -ffp-contract=off -fno-math-errno
  "-fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=") # no program names the folder that it was built in
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 takes additions of short strings for copies that overlap or have no end in optimised builds.
  target_compile_options(corvane_options INTERFACE -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
endif()
if(CORVANE_WARNINGS_ARE_ERRORS)
  target_compile_options(corvane_options INTERFACE -Werror)
endif()
if(WIN32)
  # Windows 10, and no macros named min and max.
  target_compile_definitions(corvane_options INTERFACE _WIN32_WINNT=0x0A00 NOMINMAX WIN32_LEAN_AND_MEAN)
endif()
if(CORVANE_SANITIZE)
  target_compile_options(corvane_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(corvane_options INTERFACE -fsanitize=address,undefined)
endif()

# For code that runs too seldom to be worth the compiler's time, such as the reading of arguments.
set(corvane_light_optimisation $<$<CONFIG:Release>:-O1> $<$<CONFIG:RelWithDebInfo>:-O0>)
# Tests are not worth it at all. They are compiled alike, with Qt or without, so that they share precompiled headers.
set(corvane_test_compile_options $<$<NOT:$<CONFIG:Debug>>:-O0> -fPIC)

# corvane_library(NAME SOURCES file... [DEPENDS target...] [PRECOMPILED header...]): the headers named are precompiled
# for this library, instead of those that all others share.
function(corvane_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS;PRECOMPILED" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC corvane_options ${ARG_DEPENDS})
  if(ARG_PRECOMPILED)
    target_precompile_headers(${name} PRIVATE ${ARG_PRECOMPILED})
  else()
    target_precompile_headers(${name} REUSE_FROM corvane_headers)
  endif()
  if(CORVANE_FUZZ)
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()

# corvane_module(NAME SOURCES file... [DEPENDS target...]): a library that programs load when they want it. What it has
# of the libraries it depends on is its own.
function(corvane_module name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(${name} MODULE ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES PREFIX "" SUFFIX .so CXX_VISIBILITY_PRESET hidden)
  target_link_libraries(${name} PRIVATE corvane_options ${ARG_DEPENDS})
  if(NOT WIN32)
    target_link_options(${name} PRIVATE LINKER:--exclude-libs,ALL)
  endif()
endfunction()

# corvane_loads(NAME MODULE): puts a module that is built beside a program that loads it.
function(corvane_loads name module)
  add_dependencies(${name} ${module})
  add_custom_command(TARGET ${name} POST_BUILD COMMAND "${CMAKE_COMMAND}" -E create_symlink
    "$<TARGET_FILE:${module}>" "$<TARGET_FILE_DIR:${name}>/$<TARGET_FILE_NAME:${module}>" VERBATIM)
endfunction()

# corvane_executable(NAME SOURCES file... [DEPENDS target...])
function(corvane_executable name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE corvane_options ${ARG_DEPENDS})
endfunction()

# corvane_test(NAME SOURCES file... [DEPENDS target...] [ENVIRONMENT VARIABLE=value]): a GoogleTest program whose cases
# CTest runs one by one.
function(corvane_test name)
  cmake_parse_arguments(ARG "" "ENVIRONMENT" "SOURCES;DEPENDS" ${ARGN})
  corvane_executable(${name} SOURCES ${ARG_SOURCES} DEPENDS ${ARG_DEPENDS} GTest::gtest_main GTest::gmock)
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
  target_compile_options(${name} PRIVATE ${corvane_test_compile_options})
  target_precompile_headers(${name} REUSE_FROM corvane_test_headers)
  corvane_add_cases(${name} ${ARG_ENVIRONMENT})
endfunction()

# corvane_add_cases(NAME [VARIABLE=value...]): registers the cases of a GoogleTest program, with variables of their
# environment; or the program as a whole.
function(corvane_add_cases name)
  if(CORVANE_WHOLE_PROGRAMS)
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(${name} PROPERTIES TIMEOUT 900 ENVIRONMENT "${ARGN}")
  else()
    gtest_discover_tests(${name} NO_PRETTY_VALUES DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300 ENVIRONMENT "${ARGN}")
  endif()
endfunction()

# corvane_bench(NAME SOURCES file... [DEPENDS target...])
function(corvane_bench name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  corvane_executable(${name} SOURCES ${ARG_SOURCES} DEPENDS ${ARG_DEPENDS} benchmark::benchmark_main)
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
endfunction()

# corvane_fuzz(NAME SOURCES file... [DEPENDS target...])
function(corvane_fuzz name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  corvane_executable(${name} SOURCES ${ARG_SOURCES} DEPENDS ${ARG_DEPENDS})
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  add_dependencies(corvane_fuzz_targets ${name})
endfunction()

# corvane_windows_library(NAME SOURCES file... [DEPENDS target...]): window classes with their .ui files beside them.
function(corvane_windows_library name)
  corvane_library(${name} ${ARGN})
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON)
endfunction()
