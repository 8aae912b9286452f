// Runs a program and writes down its memory at the moment of its exit: what the kernel says
// of the process itself, while the usual ru_maxrss begins with that of its parent.
// Usage: bench-peak-memory FILE PROGRAM [ARGUMENT...]
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <fstream>
#include <string>

namespace {

[[noreturn]] void become_program(char** command)
{
  ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
  raise(SIGSTOP);
  execv(command[0], command);
  _exit(127);
}

void copy_lines(std::string const& path, std::ofstream& to)
{
  std::ifstream from(path);
  for (std::string line; std::getline(from, line);)
    if (line.starts_with("VmHWM:") || line.starts_with("VmPTE:")
        || line.starts_with("Private_Dirty:"))
      to << line << "\n";
}

void write_down(pid_t program, char const* path)
{
  std::ofstream file(path);
  std::string const process = "/proc/" + std::to_string(program);
  copy_lines(process + "/status", file);
  copy_lines(process + "/smaps_rollup", file);
}

// Lets the program run from one stop to the next, until it has ended.
int watch(pid_t program, char const* path)
{
  int status = 0;
  while (waitpid(program, &status, 0) == program && WIFSTOPPED(status)) {
    bool const exits = status >> 8 == (SIGTRAP | PTRACE_EVENT_EXIT << 8);
    bool const of_tracing = WSTOPSIG(status) == SIGTRAP || WSTOPSIG(status) == SIGSTOP;
    if (exits) write_down(program, path);
    ptrace(PTRACE_SETOPTIONS, program, nullptr, PTRACE_O_TRACEEXIT);
    ptrace(PTRACE_CONT, program, nullptr, of_tracing ? 0 : WSTOPSIG(status));
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

}  // namespace

int main(int argc, char* argv[])
{
  if (argc < 3) {
    std::fputs("Usage: bench-peak-memory FILE PROGRAM [ARGUMENT...]\n", stderr);
    return 1;
  }
  pid_t const program = fork();
  if (program == 0) become_program(argv + 2);
  return watch(program, argv[1]);
}
