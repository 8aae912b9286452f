# The unit ring: every record, table and reporter, with the outside world replaced at link
# time. The seams are calls, so the product needs no virtual functions for its tests.

add_executable(unit_test
  diag/dump_mem_test.cpp
  diag/enumeration_bits_test.cpp
  diag/message_test.cpp
  diag/raster_header_names_test.cpp
  diag/raster_header_test.cpp
  diag/side_channel_status_test.cpp
  driver/report_commands_test.cpp
  protocol/device_channel_test.cpp
  protocol/job_status_test.cpp
  protocol/printer_info_test.cpp
  protocol/printer_levels_test.cpp
  protocol/printer_state_test.cpp
  protocol/queries_retry_test.cpp
  protocol/queries_test.cpp
  protocol/retry_counter_test.cpp
  report/printer_levels_report_test.cpp
  report/printer_state_reasons_test.cpp
  report/printer_state_report_test.cpp
  report/stale_reason_cleanup_test.cpp)
target_link_libraries(unit_test PRIVATE fake_world velmo oracle test_main)

# A program of its own, because its reason table stands in for the product's.
add_executable(reason_slots_test report/printer_state_report_slots_test.cpp)
target_link_libraries(reason_slots_test PRIVATE fake_world velmo oracle test_main)

foreach(program unit_test reason_slots_test)
  gtest_discover_tests(${program} DISCOVERY_TIMEOUT 60 PROPERTIES LABELS unit TIMEOUT 120)
endforeach()

# Every source of the product needs the repository's root on the include path and nothing
# else, so it can be taken, read and compiled by itself.
get_target_property(product_sources velmo SOURCES)
foreach(source ${product_sources} driver/main.cpp)
  add_test(NAME compiles_alone:${source}
           COMMAND ${CMAKE_CXX_COMPILER} -std=c++20 -I. -fsyntax-only ${source}
           WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  set_tests_properties(compiles_alone:${source} PROPERTIES LABELS unit)
endforeach()
