# The almanac's page of three days and a year of pages; the Main screen's rows of the day.
kelmoran_add_bench(bench_almanac ${CMAKE_CURRENT_LIST_DIR}/almanac.cpp)
