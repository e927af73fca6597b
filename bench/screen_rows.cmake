kelmoran_add_bench(bench_screen_rows ${CMAKE_CURRENT_LIST_DIR}/screen_rows.cpp)
