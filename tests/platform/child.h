#pragma once
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include "platform/error.h"

// A second process that runs `work` with a pipe to tell by.
class Child {
 public:
  explicit Child(const std::function<void(int out)>& work) {
    int ends[2];
    if (pipe(ends) != 0) qFatal("pipe");
    process = fork();
    if (process == 0) {
      close(ends[0]);
      try {
        work(ends[1]);
      } catch (const Error&) {
        _exit(2);
      }
      _exit(0);
    }
    close(ends[1]);
    in = ends[0];
  }
  ~Child() {
    Kill();
    close(in);
  }
  static void Tell(int out, int number) {
    if (write(out, &number, sizeof number) != sizeof number) _exit(3);
  }
  // True if it was still running, or ended by a signal of its own.
  bool Kill() {
    if (process <= 0) return false;
    kill(process, SIGKILL);
    return Wait();
  }
  bool Wait() {
    int status = 0;
    waitpid(std::exchange(process, 0), &status, 0);
    return WIFSIGNALED(status);
  }
  // The number told next, -1 if none comes.
  int Next_Number(int milliseconds) {
    int number = -1;
    pollfd waiting{in, POLLIN, 0};
    if (poll(&waiting, 1, milliseconds) != 1 || read(in, &number, sizeof number) != sizeof number) return -1;
    return number;
  }
  pid_t process = 0;

 private:
  int in = -1;
};
