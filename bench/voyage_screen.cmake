kelmoran_add_bench(bench_voyage_screen ${CMAKE_CURRENT_LIST_DIR}/voyage_screen.cpp UI)
