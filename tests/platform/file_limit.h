#pragma once
#include <sys/resource.h>

#include <csignal>

// While it lives no file may grow beyond so many bytes, whoever writes it: a disk that is full.
class FileLimit {
 public:
  explicit FileLimit(rlim_t bytes) : handler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &former);
    const rlimit small{bytes, former.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~FileLimit() {
    setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, handler);
  }
  FileLimit(const FileLimit&) = delete;
  FileLimit& operator=(const FileLimit&) = delete;

 private:
  sighandler_t handler;
  rlimit former{};
};
