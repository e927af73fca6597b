# The long-series objects: the Earth and Sun, the Moon, the planets and Pluto at each level.
kelmoran_add_bench(bench_series ${CMAKE_CURRENT_LIST_DIR}/bench_series.cpp)
