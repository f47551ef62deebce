# Executables and scripts that hold many tests, for script/test: it runs as few processes as it can and tells of every
# test by its name. To CTest each of them is one test.

# vantrel_tests(TARGET [NAME name] [PREFIX prefix] [FILTER filter] [ENVIRONMENT name=value ...] [TIMEOUT seconds]
#               [AT_ONCE count] [DISPLAY] [ALONE] [WHOLE] [SUITE target ...])
#
# The Google Test executable TARGET. Its tests are called PREFIX and their own name; FILTER picks some of them. TIMEOUT
# is for one test, AT_ONCE says how many of them share a process (all by default). With DISPLAY they run on an X display
# of their own with a window manager, with ALONE one process at a time, and with WHOLE they count as one test called
# NAME. SUITE names libraries whose sources hold tests.
function(vantrel_tests target)
  cmake_parse_arguments(PARSE_ARGV 1 tests "DISPLAY;ALONE;WHOLE" "NAME;PREFIX;FILTER;TIMEOUT;AT_ONCE" "ENVIRONMENT;SUITE")
  if(NOT tests_NAME)
    set(tests_NAME ${tests_PREFIX}${target})
  endif()
  set(tests_COMMAND "$<TARGET_FILE:${target}>")
  set(tests_SOURCES "")
  foreach(part ${target} ${tests_SUITE})
    # Relative to the target's folder, unless they are absolute.
    list(APPEND tests_SOURCES "$<TARGET_PROPERTY:${part},SOURCE_DIR>//" "$<TARGET_PROPERTY:${part},SOURCES>")
  endforeach()
  vantrel_add_named_tests()
endfunction()

# vantrel_script_tests(NAME name COMMAND command ... [SOURCES path ...] [as above])
#
# A command that lists and runs its tests as a Google Test executable does (tests/support/named_tests.py).
function(vantrel_script_tests)
  cmake_parse_arguments(PARSE_ARGV 0 tests "DISPLAY;ALONE" "NAME;PREFIX;FILTER;TIMEOUT;AT_ONCE"
    "ENVIRONMENT;COMMAND;SOURCES")
  vantrel_add_named_tests()
endfunction()

# Of the caller's variables tests_*.
macro(vantrel_add_named_tests)
  set(filter)
  if(tests_FILTER)
    set(filter "--gtest_filter=${tests_FILTER}")
  endif()
  add_test(NAME ${tests_NAME} COMMAND ${tests_COMMAND} ${filter})
  if(tests_ENVIRONMENT)
    set_tests_properties(${tests_NAME} PROPERTIES ENVIRONMENT "${tests_ENVIRONMENT}")
  endif()
  foreach(flag DISPLAY ALONE WHOLE)
    string(TOLOWER ${flag} key)
    set(${key} false)
    if(tests_${flag})
      set(${key} true)
    endif()
  endforeach()
  foreach(list COMMAND ENVIRONMENT SOURCES)
    set(quoted_${list} "[]")
    if(tests_${list})
      set(quoted_${list} "[\"$<JOIN:${tests_${list}},\"$<COMMA>\">\"]")
    endif()
  endforeach()
  # A string, not a list: a row has lists of its own.
  set_property(GLOBAL APPEND_STRING PROPERTY VANTREL_NAMED_TESTS ",\n{\"name\": \"${tests_NAME}\", \"command\": ${quoted_COMMAND}, \
\"folder\": \"${CMAKE_CURRENT_BINARY_DIR}\", \"environment\": ${quoted_ENVIRONMENT}, \"prefix\": \"${tests_PREFIX}\", \
\"filter\": \"${tests_FILTER}\", \"timeout\": \"${tests_TIMEOUT}\", \"at_once\": \"${tests_AT_ONCE}\", \
\"display\": ${display}, \"alone\": ${alone}, \"whole\": ${whole}, \"sources\": ${quoted_SOURCES}}")
endmacro()

# Behind the last of them: leaves build/PRESET/named-tests.json.
function(vantrel_write_named_tests)
  get_property(rows GLOBAL PROPERTY VANTREL_NAMED_TESTS)
  string(SUBSTRING "${rows}" 2 -1 rows)
  file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/named-tests.json CONTENT "[\n${rows}\n]\n")
endfunction()
