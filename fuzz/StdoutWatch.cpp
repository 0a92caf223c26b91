#include "StdoutWatch.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

StdoutWatch::StdoutWatch() {
  std::fflush(stdout);
  fd_ = memfd_create("stdout-watch", 0);
  if (fd_ < 0 || dup2(fd_, STDOUT_FILENO) < 0) {
    std::perror("StdoutWatch");
    std::abort();
  }
}

std::string StdoutWatch::take() {
  std::fflush(stdout);
  std::string text;
  char buffer[4096];
  lseek(fd_, 0, SEEK_SET);
  ssize_t n;
  while ((n = read(fd_, buffer, sizeof buffer)) > 0) text.append(buffer, static_cast<size_t>(n));
  if (ftruncate(fd_, 0) != 0) std::abort();
  lseek(fd_, 0, SEEK_SET);
  return text;
}
