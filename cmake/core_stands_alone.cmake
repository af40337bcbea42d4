# cmake -DSOURCE_DIR=... -P core_stands_alone.cmake
# The core and the command line include no Qt header: the desktop application (src/ui) is
# one front end among others, and a build without it must lose nothing else.
file(GLOB_RECURSE sources ${SOURCE_DIR}/src/*.h ${SOURCE_DIR}/src/*.cpp)
list(FILTER sources EXCLUDE REGEX "/src/ui/")
set(offenders "")
foreach(source IN LISTS sources)
  file(STRINGS ${source} includes REGEX "^[ \t]*#[ \t]*include[ \t]*[<\"](Q[A-Za-z]+|qt[a-z]*/)")
  if(includes)
    string(APPEND offenders "\n  ${source}: ${includes}")
  endif()
endforeach()
if(offenders)
  message(FATAL_ERROR "Qt headers outside src/ui:${offenders}")
endif()
list(LENGTH sources count)
message(STATUS "${count} sources of the core and the command line, none includes Qt")
