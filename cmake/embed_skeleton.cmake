# cmake -DSKELETON_DIR=... -DOUTPUT=... -P embed_skeleton.cmake
# Files named ".keep" only mark folders that must exist; they are not written out.
file(GLOB_RECURSE entries LIST_DIRECTORIES true RELATIVE ${SKELETON_DIR} ${SKELETON_DIR}/*)
list(SORT entries)
set(body "")
set(index "")
set(n 0)
foreach(rel IN LISTS entries)
  set(full ${SKELETON_DIR}/${rel})
  if(IS_DIRECTORY ${full})
    string(APPEND index "    {\"${rel}\", nullptr, 0, true},\n")
  else()
    get_filename_component(name ${rel} NAME)
    if(name STREQUAL ".keep")
      continue()
    endif()
    file(READ ${full} hex HEX)
    string(LENGTH "${hex}" hexlen)
    math(EXPR size "${hexlen} / 2")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
    string(APPEND body "const unsigned char kData${n}[] = {${bytes} 0};\n")
    string(APPEND index "    {\"${rel}\", kData${n}, ${size}, false},\n")
    math(EXPR n "${n} + 1")
  endif()
endforeach()
file(WRITE ${OUTPUT}.tmp
"// Generated from the skeleton folder; do not edit.
#include \"shell/skeleton.h\"

namespace quorva {
namespace {
${body}
const SkeletonEntry kEntries[] = {
${index}};
}  // namespace

std::span<const SkeletonEntry> skeleton_entries() { return kEntries; }

}  // namespace quorva
")
file(COPY_FILE ${OUTPUT}.tmp ${OUTPUT} ONLY_IF_DIFFERENT)
file(REMOVE ${OUTPUT}.tmp)
