# Version and day of the release as the changelog tells them: NORVO_RELEASE_DAY is year-month-day.
set(NORVO_CHANGELOG "${CMAKE_CURRENT_LIST_DIR}/changelog")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${NORVO_CHANGELOG}")

file(STRINGS "${NORVO_CHANGELOG}" head REGEX "^norvo-recovery \\(" LIMIT_COUNT 1)
if(NOT head MATCHES "\\(${PROJECT_VERSION}\\)")
  message(FATAL_ERROR "The project's version is ${PROJECT_VERSION}, but ${NORVO_CHANGELOG} begins "
                      "with: ${head}")
endif()

file(STRINGS "${NORVO_CHANGELOG}" trailer REGEX "^ -- " LIMIT_COUNT 1)
if(NOT trailer MATCHES "  [A-Z][a-z][a-z], ([0-9]+) ([A-Z][a-z][a-z]) ([0-9][0-9][0-9][0-9]) ")
  message(FATAL_ERROR "${NORVO_CHANGELOG} tells no day: ${trailer}")
endif()
set(day "0${CMAKE_MATCH_1}")
set(year "${CMAKE_MATCH_3}")
set(months Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec)
list(FIND months "${CMAKE_MATCH_2}" month)
math(EXPR month "${month} + 101")
string(SUBSTRING "${month}" 1 2 month)
string(REGEX REPLACE "^0(..)$" "\\1" day "${day}")
set(NORVO_RELEASE_DAY "${year}-${month}-${day}")
