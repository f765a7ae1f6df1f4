# Servers of the tests' own, and of the benchmarks.
find_package(PostgreSQL REQUIRED)
file(GLOB programs /usr/lib/postgresql/*/bin)
find_program(ORVEN_POSTGRES NAMES postgres PATHS ${programs} NO_DEFAULT_PATH REQUIRED)
cmake_path(GET ORVEN_POSTGRES PARENT_PATH programs)
add_library(orven_postgres_server STATIC ${CMAKE_CURRENT_LIST_DIR}/postgresserver.cpp)
add_library(orven_full_disk MODULE ${CMAKE_CURRENT_LIST_DIR}/fulldisk.cpp)
# Of the server's own process, so that no sanitizer goes with it.
target_link_libraries(orven_full_disk PRIVATE ${CMAKE_DL_LIBS})
add_dependencies(orven_postgres_server orven_full_disk)
target_compile_definitions(orven_postgres_server PRIVATE ORVEN_POSTGRES_PROGRAMS="${programs}"
  ORVEN_FULL_DISK="$<TARGET_FILE:orven_full_disk>")
target_link_libraries(orven_postgres_server PRIVATE PostgreSQL::PostgreSQL orven_options)
target_include_directories(orven_postgres_server PUBLIC ${PROJECT_SOURCE_DIR}/tests)
