# The real window over the outside in memory: real mouse and keyboard events, and what they did can be read off at
# once. It needs a screen, and no other test's window in front of it.
add_executable(window_test window_test.cpp window_keyboard_test.cpp floating_point.cpp window_test.rc
  ../../host/win32/dialog_template.cpp ../../host/win32/entry.cpp ../../host/win32/module.cpp ../../host/win32/open_box.cpp
  ../../host/win32/styled.cpp)
set_source_files_properties(window_test.rc PROPERTIES
  INCLUDE_DIRECTORIES ${CMAKE_SOURCE_DIR} OBJECT_DEPENDS ${CMAKE_SOURCE_DIR}/window/win32/vantor.manifest)
target_link_libraries(window_test PRIVATE
  vantor_window_win32 vantor_fakes vantor_plugin game_simulation gtest_main)
set_target_properties(window_test PROPERTIES
  RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin CROSSCOMPILING_EMULATOR wine)
gtest_add_tests(TARGET window_test TEST_PREFIX wine. TEST_LIST Added)
set_tests_properties(${Added} PROPERTIES RESOURCE_LOCK wine TIMEOUT 60)

# The real boxes, which the window's test only records.
add_executable(window_boxes_test window_boxes_test.cpp floating_point.cpp window_test.rc)
# The two need each other.
target_link_libraries(window_boxes_test PRIVATE $<LINK_GROUP:RESCAN,vantor_host_win32,vantor_logic> gtest_main)
set_target_properties(window_boxes_test PROPERTIES
  RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin CROSSCOMPILING_EMULATOR wine)
gtest_add_tests(TARGET window_boxes_test TEST_PREFIX wine. TEST_LIST Added)
set_tests_properties(${Added} PROPERTIES RESOURCE_LOCK wine TIMEOUT 60)
