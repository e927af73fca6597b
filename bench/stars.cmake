kelmoran_add_bench(bench_stars ${CMAKE_CURRENT_LIST_DIR}/stars.cpp)
