# One static library a folder, one test program a folder, all with the same flags.

# Dev: quick to compile, quick enough to run thousands of generated programs.
set(CMAKE_CXX_FLAGS_DEV "-O1 -g1" CACHE STRING "Flags of the everyday build")
set(CMAKE_EXE_LINKER_FLAGS_DEV "" CACHE STRING "")

add_library(torvane_flags INTERFACE)
target_compile_options(torvane_flags INTERFACE
  -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  # Golden files hold to the last bit: no fused multiply-add behind our back.
  -ffp-contract=off)
target_include_directories(torvane_flags INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(TORVANE_SANITIZE)
  target_compile_options(torvane_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(torvane_flags INTERFACE -fsanitize=address,undefined)
endif()
if(TORVANE_FUZZ)
  target_compile_options(torvane_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# torvane_module(name [ONLY regex] [EXCLUDE regex] [OMIT file...] DEPENDS lib...): every .cpp of the
# calling folder as torvane_<name>, or some of them.
function(torvane_module name)
  cmake_parse_arguments(arg "" "ONLY;EXCLUDE" "OMIT;DEPENDS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(arg_ONLY)
    list(FILTER sources INCLUDE REGEX ${arg_ONLY})
  endif()
  if(arg_EXCLUDE)
    list(FILTER sources EXCLUDE REGEX ${arg_EXCLUDE})
  endif()
  if(arg_OMIT)
    list(REMOVE_ITEM sources ${arg_OMIT})
  endif()
  list(FILTER sources EXCLUDE REGEX "/Main[A-Za-z]*\\.cpp$")
  if(sources)
    add_library(torvane_${name} STATIC ${sources})
    target_link_libraries(torvane_${name} PUBLIC torvane_flags ${arg_DEPENDS})
    if(TORVANE_PCH)
      target_precompile_headers(torvane_${name} PRIVATE
        <algorithm> <array> <cmath> <cstdint> <functional> <memory> <string> <string_view> <vector>)
    endif()
  else()
    add_library(torvane_${name} INTERFACE)
    target_link_libraries(torvane_${name} INTERFACE torvane_flags ${arg_DEPENDS})
  endif()
endfunction()

# torvane_tests(name [QT] DEPENDS lib...): every .cpp of the calling folder as one test program.
function(torvane_tests name)
  cmake_parse_arguments(arg "QT" "" "DEPENDS;ENVIRONMENT" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(${name}_tests ${sources})
  # Qt wants position independent code, and a precompiled header serves one way of compiling only.
  set(main torvane_test_main)
  if(arg_QT)
    set(main torvane_qt_test_main)
  endif()
  target_link_libraries(${name}_tests PRIVATE ${arg_DEPENDS} GTest::gmock rapidcheck ${main})
  target_include_directories(${name}_tests PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  if(TORVANE_PCH)
    target_precompile_headers(${name}_tests REUSE_FROM ${main})
  endif()
  gtest_discover_tests(${name}_tests
    TEST_PREFIX "${name}."
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 300 ENVIRONMENT "QT_QPA_PLATFORM=offscreen;${arg_ENVIRONMENT}")
endfunction()
