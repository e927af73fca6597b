kelmoran_add_bench(bench_eclipses ${CMAKE_CURRENT_LIST_DIR}/eclipses.cpp)
