kelmoran_add_bench(bench_voyage ${CMAKE_CURRENT_LIST_DIR}/voyage.cpp)
