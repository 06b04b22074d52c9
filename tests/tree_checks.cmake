# The tree's own rules, as tests. They look at sources and not at a build's kind, so only the default
# preset runs them.
find_package(Python3 REQUIRED COMPONENTS Interpreter)

function(pxdutil_tree_check name)
  add_test(NAME Tree.${name}
    COMMAND ${Python3_EXECUTABLE} -B "${PROJECT_SOURCE_DIR}/scripts/checks/${name}.py" ${ARGN})
  set_tests_properties(Tree.${name} PROPERTIES LABELS tree TIMEOUT 600)
endfunction()

pxdutil_tree_check(floors)
pxdutil_tree_check(sources)
pxdutil_tree_check(words)
pxdutil_tree_check(comments)
pxdutil_tree_check(selftest)
pxdutil_tree_check(registered --build "${PROJECT_BINARY_DIR}" --ctest "${CMAKE_CTEST_COMMAND}")
pxdutil_tree_check(headers --compiler "${CMAKE_CXX_COMPILER}")
set_tests_properties(Tree.headers PROPERTIES LABELS "tree;slow")

# The lists of what the shared library exports and of how its classes are laid out are those of GCC
# on 64-bit x86.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU"
    AND CMAKE_SIZEOF_VOID_P EQUAL 8 AND CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  pxdutil_tree_check(symbols "$<TARGET_FILE:pxdutil_shared>"
    --static "$<TARGET_FILE:pxdutil_static>" --users "${CMAKE_CURRENT_BINARY_DIR}")
  pxdutil_tree_check(layout --compiler "${CMAKE_CXX_COMPILER}")
endif()
add_test(NAME Tree.stored_bytes
  COMMAND ${Python3_EXECUTABLE} -B "${PROJECT_SOURCE_DIR}/tests/stored_bytes/expected.py")
set_tests_properties(Tree.stored_bytes PROPERTIES LABELS tree)
