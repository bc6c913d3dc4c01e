// Of the place where a wrong byte was allocated two calls are kept: the whole way there would take as long
// again as the tests. ASAN_OPTIONS in the environment says otherwise where it is wanted.
extern "C" const char* __asan_default_options();  // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __asan_default_options() {
  return "malloc_context_size=2";
}  // NOLINT(bugprone-reserved-identifier)
