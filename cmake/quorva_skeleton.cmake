# Turns the shipped working-folder skeleton into a C++ source, so the binaries need no
# installed data file: `quorva init` and the first start write it out.
set(QUORVA_SKELETON_DIR ${CMAKE_SOURCE_DIR}/skeleton)
set(QUORVA_SKELETON_CPP ${CMAKE_BINARY_DIR}/generated/skeleton_data.cpp)
file(GLOB_RECURSE QUORVA_SKELETON_FILES CONFIGURE_DEPENDS ${QUORVA_SKELETON_DIR}/*)
# The list itself is a dependency: a file moved or removed must embed the skeleton again.
string(REPLACE ";" "\n" QUORVA_SKELETON_LIST "${QUORVA_SKELETON_FILES}")
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/generated/skeleton_files.txt
     CONTENT "${QUORVA_SKELETON_LIST}\n" @ONLY)
add_custom_command(
  OUTPUT ${QUORVA_SKELETON_CPP}
  COMMAND ${CMAKE_COMMAND} -DSKELETON_DIR=${QUORVA_SKELETON_DIR} -DOUTPUT=${QUORVA_SKELETON_CPP}
          -P ${CMAKE_SOURCE_DIR}/cmake/embed_skeleton.cmake
  DEPENDS ${QUORVA_SKELETON_FILES} ${CMAKE_BINARY_DIR}/generated/skeleton_files.txt
          ${CMAKE_SOURCE_DIR}/cmake/embed_skeleton.cmake
  COMMENT "Embedding the working-folder skeleton")
