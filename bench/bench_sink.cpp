// The benchmarks' service as a process of its own.
//
// Usage: bench_sink FOLDER
// Makes its authority, ca.pem, in the folder and writes its port, as a line, to standard output. Runs until it is
// killed.
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>

#include "SinkServer.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: bench_sink FOLDER\n", stderr);
    return 2;
  }
  std::signal(SIGPIPE, SIG_IGN);
  try {
    const bench::SinkServer server(argv[1]);
    std::printf("%d\n", server.port());
    std::fflush(stdout);
    for (;;) pause();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench_sink: %s\n", error.what());
  }
  return 1;
}
