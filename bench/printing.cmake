kelmoran_add_bench(bench_printing ${CMAKE_CURRENT_LIST_DIR}/printing.cpp UI)
