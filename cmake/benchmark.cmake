find_package(benchmark REQUIRED)
