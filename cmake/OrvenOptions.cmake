# Warnings and sanitizers, in one interface target that every target of ours links.
add_library(orven_options INTERFACE)
target_compile_options(orven_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
# gcc 12 sees overlaps in the standard library's own string code that are none (its bug 105651).
target_compile_options(orven_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
target_include_directories(orven_options INTERFACE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/include)
if(ORVEN_SANITIZE)
  target_compile_options(orven_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(orven_options INTERFACE -fsanitize=address,undefined)
  # gcc can't follow initialization through its own instrumentation; the other builds still watch it.
  target_compile_options(orven_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()
if(ORVEN_FUZZ)
  target_compile_options(orven_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
# What is shipped is hardened as the platform can, whatever the type of build is called that ships it;
# tests/host/hardened.cmake reads it from what was built. Position independent programs need the linker told too.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported()
set(ORVEN_HARDENED "$<NOT:$<OR:$<CONFIG:Debug>,$<BOOL:${ORVEN_SANITIZE}>>>")
foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection)
  string(MAKE_C_IDENTIFIER "ORVEN_HAS${flag}" known)
  check_cxx_compiler_flag(${flag} ${known})
  if(${known})
    target_compile_options(orven_options INTERFACE $<${ORVEN_HARDENED}:${flag}>)
  endif()
endforeach()
target_link_options(orven_options INTERFACE "$<${ORVEN_HARDENED}:LINKER:-z,relro,-z,now,-z,noexecstack>")

# orven_hide(target): what isn't marked ORVENMOD_API stays within the library that the target's code becomes part of.
function(orven_hide target)
  set_target_properties(${target} PROPERTIES C_VISIBILITY_PRESET hidden CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# orven_headers(name headers...): headers that many files include, read once for the targets that reuse them. One build
# goes without, so that a file that forgets an include is found.
function(orven_headers name)
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/${name}.cpp CONTENT "")
  add_library(${name} OBJECT ${PROJECT_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE orven_options)
  target_precompile_headers(${name} PRIVATE ${ARGN})
  # Else clang writes the time of each header into the result, and a compiler cache finds nothing again.
  target_compile_options(${name} PRIVATE "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
endfunction()

# orven_reuse_headers(target name): nothing where headers aren't precompiled.
function(orven_reuse_headers target name)
  if(ORVEN_PRECOMPILE)
    target_precompile_headers(${target} REUSE_FROM ${name})
  endif()
endfunction()

set(ORVEN_STANDARD_HEADERS <algorithm> <chrono> <functional> <map> <memory> <optional> <stdexcept> <string> <string_view>
  <unordered_map> <vector>)
if(ORVEN_PRECOMPILE)
  orven_headers(orven_standard_headers ${ORVEN_STANDARD_HEADERS})
  orven_hide(orven_standard_headers)
endif()

# orven_library(name SOURCES ... LINKS ...): one layer of the component.
function(orven_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE orven_options ${ARG_PRIVATE_LINKS})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/include)
  # Only with the optimizer, so not in tests, nor where nobody says whether it is on.
  target_compile_options(${name} PRIVATE
    "$<$<AND:$<CONFIG:Release,RelWithDebInfo,MinSizeRel>,${ORVEN_HARDENED}>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
  orven_hide(${name})
  orven_reuse_headers(${name} orven_standard_headers)
endfunction()

# orven_test(name SOURCES ... LINKS ... PREFIX ...): one test binary, each of its cases a ctest of its own; the prefix
# tells cases apart that run in several binaries. ON_TDS_SERVER: all of its cases are one ctest, since a server takes
# seconds to make a process its database; skipped where no server is named.
function(orven_test name)
  cmake_parse_arguments(ARG "ON_TDS_SERVER" "PREFIX" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} orven_source_folder orven_options GTest::gtest GTest::gmock GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  orven_reuse_headers(${name} orven_test_headers)
  set(environment "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
  if(ARG_ON_TDS_SERVER)
    add_test(NAME ${ARG_PREFIX}${name} COMMAND ${name})
    set_tests_properties(${ARG_PREFIX}${name} PROPERTIES TIMEOUT 900 ENVIRONMENT "${environment}"
      RESOURCE_LOCK tds_server
      SKIP_REGULAR_EXPRESSION "ORVEN_TDS_SERVER names none")
  else()
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120 TEST_PREFIX "${ARG_PREFIX}"
      PROPERTIES TIMEOUT 300 ENVIRONMENT "${environment}")
  endif()
endfunction()
