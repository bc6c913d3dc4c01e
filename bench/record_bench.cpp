// Reading, changing and writing back one field of the 64-field option record: Record against the plainest
// code that does the same.
#include <benchmark/benchmark.h>

#include <cstring>

#include "base/record.h"

namespace {

std::string Options() {
  std::string text;
  for (int i = 0; i < 64; ++i) text += i % 3 == 0 ? "1 " : "0 ";
  text.pop_back();
  return text;
}

std::string PlainChange(std::string_view text, std::size_t index, std::string_view field) {
  std::vector<std::string_view> fields;
  fields.reserve(64);
  const char* begin = text.data();
  const char* const end = begin + text.size();
  while (const void* blank = std::memchr(begin, ' ', static_cast<std::size_t>(end - begin))) {
    const char* stop = static_cast<const char*>(blank);
    fields.emplace_back(begin, static_cast<std::size_t>(stop - begin));
    begin = stop + 1;
  }
  fields.emplace_back(begin, static_cast<std::size_t>(end - begin));
  fields[index] = field;
  std::string result;
  result.reserve(text.size() + field.size());
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) result += ' ';
    result += fields[i];
  }
  return result;
}

void PlainRecord(benchmark::State& state) {
  const std::string text = Options();
  for (auto _ : state) benchmark::DoNotOptimize(PlainChange(text, 61, "1"));
}
BENCHMARK(PlainRecord);

void RecordChange(benchmark::State& state) {
  const std::string text = Options();
  for (auto _ : state) {
    base::Record record(text);
    record.Set(61, "1");
    benchmark::DoNotOptimize(record.Join());
  }
}
BENCHMARK(RecordChange);

}  // namespace
