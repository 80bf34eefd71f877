target_sources(plax-bench PRIVATE script/setter_bench.cpp)
