kelmoran_add_bench(bench_sights_window ${CMAKE_CURRENT_LIST_DIR}/sights_window.cpp UI)
