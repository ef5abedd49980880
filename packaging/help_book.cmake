# Makes the help book from the pages in docs/help and contents.txt there, which lists them in reading order:
# two blanks of indentation for each level, the page, two blanks, and its title.
#
#   cmake -D SOURCES=docs/help -D WORK=FOLDER -D BOOK=FILE.chm -D CHMCMD=PROGRAM -P packaging/help_book.cmake
cmake_minimum_required(VERSION 3.25)

if(NOT CHMCMD)
  message(FATAL_ERROR "The help book needs chmcmd (Debian package fp-utils)")
endif()
file(REMOVE_RECURSE ${WORK})
file(COPY ${SOURCES}/ DESTINATION ${WORK} PATTERN "*.sh" EXCLUDE PATTERN "contents.txt" EXCLUDE)

file(STRINGS ${SOURCES}/contents.txt ENTRIES REGEX "[^ ]")
set(LEVEL 0)
set(PAGES "")
set(CONTENTS "<html><body>\n<ul>\n")
foreach(ENTRY IN LISTS ENTRIES)
  string(REGEX MATCH "^( *)([^ ]+)  (.+)$" MATCHED "${ENTRY}")
  if(NOT MATCHED OR NOT EXISTS ${SOURCES}/${CMAKE_MATCH_2})
    message(FATAL_ERROR "contents.txt: no page for \"${ENTRY}\"")
  endif()
  set(PAGE ${CMAKE_MATCH_2})
  set(TITLE ${CMAKE_MATCH_3})
  string(LENGTH "${CMAKE_MATCH_1}" INDENT)
  math(EXPR INDENT "${INDENT} / 2")
  while(LEVEL LESS INDENT)
    string(APPEND CONTENTS "<ul>\n")
    math(EXPR LEVEL "${LEVEL} + 1")
  endwhile()
  while(LEVEL GREATER INDENT)
    string(APPEND CONTENTS "</ul>\n")
    math(EXPR LEVEL "${LEVEL} - 1")
  endwhile()
  string(APPEND CONTENTS "<li><object type=\"text/sitemap\"><param name=\"Name\" value=\"${TITLE}\">"
    "<param name=\"Local\" value=\"${PAGE}\"></object>\n")
  list(APPEND PAGES ${PAGE})
endforeach()
while(LEVEL GREATER 0)
  string(APPEND CONTENTS "</ul>\n")
  math(EXPR LEVEL "${LEVEL} - 1")
endwhile()
file(WRITE ${WORK}/book.hhc "${CONTENTS}</ul>\n</body></html>\n")

# A page that the contents leave out could only be found by a link.
file(GLOB FOUND RELATIVE ${SOURCES} ${SOURCES}/*.html)
foreach(PAGE IN LISTS FOUND)
  if(NOT PAGE IN_LIST PAGES)
    message(FATAL_ERROR "contents.txt does not list ${PAGE}")
  endif()
endforeach()

file(GLOB EXTRA RELATIVE ${SOURCES} ${SOURCES}/*.css ${SOURCES}/images/*.png)
list(JOIN PAGES "\n" PAGE_LINES)
list(JOIN EXTRA "\n" EXTRA_LINES)
list(GET PAGES 0 FIRST)
file(WRITE ${WORK}/book.hhp "[OPTIONS]
Title=Vantor help
Compiled file=book.chm
Contents file=book.hhc
Default topic=${FIRST}
Full-text search=Yes
Language=0x409 English (United States)

[FILES]
${PAGE_LINES}
${EXTRA_LINES}
")
execute_process(COMMAND ${CHMCMD} --no-html-scan book.hhp WORKING_DIRECTORY ${WORK}
  RESULT_VARIABLE STATUS OUTPUT_VARIABLE OUTPUT ERROR_VARIABLE OUTPUT)
if(NOT STATUS EQUAL 0 OR NOT EXISTS ${WORK}/book.chm)
  message(FATAL_ERROR "chmcmd: ${OUTPUT}")
endif()
file(COPY_FILE ${WORK}/book.chm ${BOOK})
