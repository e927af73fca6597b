kelmoran_add_bench(bench_atlas ${CMAKE_CURRENT_LIST_DIR}/atlas.cpp UI)
