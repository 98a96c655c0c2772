# The samples of the user's guide: every program in docs/snippets/ is built
# against the library and run as the test snippet.<name>; it returns 0 when
# what the guide says holds. A second check keeps the guide's code blocks
# copied from those programs.
file(GLOB ROVANE_SNIPPETS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/snippets/*.cpp)
foreach(src ${ROVANE_SNIPPETS})
  get_filename_component(name ${src} NAME_WE)
  add_executable(snippet_${name} ${src})
  target_link_libraries(snippet_${name} PRIVATE Rovane::rovane)
  target_compile_options(snippet_${name} PRIVATE ${ROVANE_FP_FLAGS})
  add_test(NAME snippet.${name} COMMAND snippet_${name})
  set_tests_properties(snippet.${name} PROPERTIES TIMEOUT 60)
endforeach()
add_test(NAME snippet.guide-samples
  COMMAND ${CMAKE_COMMAND} -DSOURCE_DIR=${PROJECT_SOURCE_DIR} -P ${CMAKE_CURRENT_SOURCE_DIR}/CheckGuideSamples.cmake)
