# Sources of the object model and of the store, which are part of the base library.
find_program(FLATC_EXECUTABLE flatc REQUIRED)
find_path(XXHASH_INCLUDE_DIR xxhash.h REQUIRED)

set(store_dir ${CMAKE_CURRENT_SOURCE_DIR}/../store)
set(generated_dir ${CMAKE_CURRENT_BINARY_DIR}/generated)
add_custom_command(
  OUTPUT ${generated_dir}/columnfile_generated.h
  COMMAND ${FLATC_EXECUTABLE} --cpp -o ${generated_dir} ${store_dir}/columnfile.fbs
  DEPENDS ${store_dir}/columnfile.fbs
  COMMENT "Generating the file directory's accessors")

set(oabase_object_sources
  collection.cpp
  database.cpp
  databasewriter.cpp
  handlepool.cpp
  object.cpp
  ownerruns.cpp
  prop.cpp
  properties.cpp
  session.cpp
  stringtable.cpp
  table.cpp
  ${store_dir}/column.cpp
  ${store_dir}/columnfile.cpp
  ${store_dir}/filelayer.cpp
  ${store_dir}/filelock.cpp
  ${store_dir}/mappedfile.cpp
  ${generated_dir}/columnfile_generated.h)
set(oabase_object_includes ${generated_dir} ${store_dir} ${XXHASH_INCLUDE_DIR})
