kelmoran_add_bench(bench_sights ${CMAKE_CURRENT_LIST_DIR}/sights.cpp)
