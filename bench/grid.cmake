kelmoran_add_bench(bench_grid ${CMAKE_CURRENT_LIST_DIR}/grid.cpp UI)
