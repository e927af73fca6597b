kelmoran_add_bench(bench_earth_frame ${CMAKE_CURRENT_LIST_DIR}/ephemeris_time.cpp)
