# Writes the C++ snippet of the README as a source file: cmake -DROOT= -DOUTPUT= -P snippet.cmake
cmake_minimum_required(VERSION 3.25)
set(PROJECT_SOURCE_DIR ${ROOT})
cmake_path(GET OUTPUT PARENT_PATH CMAKE_CURRENT_BINARY_DIR)
include(${ROOT}/tests/host/readme.cmake)
