# Each layer of src/ is compiled from every source file of its folder (so
# adding a file never means editing a CMakeLists.txt) into an object library;
# the layers below the windows are then linked into one static core library.
function(m182_module name)
  cmake_parse_arguments(ARG "" "" "DEPS" ${ARGN})
  file(GLOB _sources CONFIGURE_DEPENDS
       ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h
       ${CMAKE_CURRENT_SOURCE_DIR}/*.ui)
  add_library(m182_${name} OBJECT ${_sources})
  target_include_directories(m182_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(m182_${name} PUBLIC ${ARG_DEPS})
  target_compile_options(m182_${name} PRIVATE -Wall -Wextra)
  target_compile_definitions(m182_${name} PUBLIC QT_NO_KEYWORDS)
endfunction()

# One test executable per folder of tests/, linking the libraries under test
# and the shared support library; every gtest case is registered with CTest.
function(m182_test name)
  cmake_parse_arguments(ARG "" "" "LIBS" ${ARGN})
  file(GLOB _sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_executable(test_${name} ${_sources} ${PROJECT_SOURCE_DIR}/tests/TestEnvironment.cpp)
  target_link_libraries(test_${name} PRIVATE ${ARG_LIBS} GTest::gtest GTest::gtest_main)
  target_compile_options(test_${name} PRIVATE -Wall -Wextra)
  # The locale, time zone and platform are fixed by TestEnvironment.cpp:
  # gtest_discover_tests passes only the first variable of an ENVIRONMENT
  # list through.
  gtest_discover_tests(test_${name}
    DISCOVERY_MODE PRE_TEST
    PROPERTIES ENVIRONMENT "LANG=C.UTF-8")
endfunction()

# The tests of `name` registered once more, named "PostgreSQL.<test>", with
# the host's databases on the PostgreSQL server that M182_PG names (see
# scripts/with-postgres); without a server they report themselves skipped.
# gtest_discover_tests passes only the first variable of an ENVIRONMENT list
# through (the others become property names), so the switch stands alone.
function(m182_test_on_postgresql name)
  gtest_discover_tests(test_${name}
    DISCOVERY_MODE PRE_TEST
    TEST_PREFIX "PostgreSQL."
    PROPERTIES ENVIRONMENT "M182_PROVIDER=PostgreSQL")
endfunction()
