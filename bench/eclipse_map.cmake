kelmoran_add_bench(bench_eclipse_map ${CMAKE_CURRENT_LIST_DIR}/eclipse_map.cpp UI)
