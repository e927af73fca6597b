kelmoran_add_bench(bench_places ${CMAKE_CURRENT_LIST_DIR}/places.cpp)
