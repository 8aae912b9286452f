// The filter's own functions, without processes and pipes. What they say goes to /dev/null.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <string>

#include "diag/dump_mem.h"
#include "protocol/printer_info.h"
#include "report/printer_levels_report.h"
#include "report/printer_state_report.h"

namespace {

std::string reply()
{
  std::string bytes(192, '\0');
  bytes[145] = '\x84';
  bytes.replace(148, 4, "\x02\xbc\x01\x5e");
  return bytes;
}

void parse_reply(benchmark::State& state)
{
  std::string const bytes = reply();
  for (auto _ : state) benchmark::DoNotOptimize(PrinterInfo::Parse(bytes.data()));
}
BENCHMARK(parse_reply);

void derive_state_and_levels(benchmark::State& state)
{
  std::string const bytes = reply();
  PrinterInfo const info = PrinterInfo::Parse(bytes.data());
  for (auto _ : state) {
    benchmark::DoNotOptimize(info.GetPrinterState());
    benchmark::DoNotOptimize(info.GetPrinterLevels());
  }
}
BENCHMARK(derive_state_and_levels);

void name_for_the_log(benchmark::State& state)
{
  std::string const bytes = reply();
  PrinterInfo const info = PrinterInfo::Parse(bytes.data());
  for (auto _ : state) benchmark::DoNotOptimize(info.to_string());
}
BENCHMARK(name_for_the_log);

void dump_bytes(benchmark::State& state)
{
  std::string const bytes(512, '\x5a');
  for (auto _ : state) dump_mem("[STS]", bytes.data(), static_cast<int>(state.range()));
}
BENCHMARK(dump_bytes)->Arg(4)->Arg(192)->Arg(512);

void report_reasons(benchmark::State& state)
{
  for (auto _ : state) update_printer_state(PrinterState::Good());
}
BENCHMARK(report_reasons);

void report_levels(benchmark::State& state)
{
  PrinterLevels const levels = PrinterLevels::Fill(700, 350, 0x84);
  for (auto _ : state) report_printer_levels(levels);
}
BENCHMARK(report_levels);

}  // namespace

int main(int argc, char* argv[])
{
  dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
