#include "Connection.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>

namespace orvane_service {
namespace {

using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

}  // namespace

void Connection::BeginStage(milliseconds time) {
  in_body_ = false;
  left_ = time;
}

void Connection::BeginBody() {
  in_body_ = true;
  left_ = patience_.body;
  counted_ = 0;
}

void Connection::Count(size_t bytes) {
  counted_ += bytes;
  // Only waits are counted, so that a slow disk here does not use up the client's time.
  if (in_body_ && counted_ >= kLowestBytes) BeginBody();
}

bool Connection::Await(short events) {
  pollfd entry{socket_, events, 0};
  // Most of the time there is something to read, and no clock is asked.
  int result = poll(&entry, 1, 0);
  if (result > 0) return true;
  const steady_clock::time_point begin = steady_clock::now();
  waiting_since_ = begin.time_since_epoch().count();
  milliseconds waited(0);
  do {
    // One millisecond more, because what is left was rounded down.
    const auto time = std::max(left_ - waited + milliseconds(1), milliseconds(0));
    result = poll(&entry, 1, static_cast<int>(time.count()));
    waited = duration_cast<milliseconds>(steady_clock::now() - begin);
  } while (result < 0 && errno == EINTR);
  waiting_since_ = 0;
  left_ = std::max(left_ - waited, milliseconds(0));
  return result > 0;
}

void Connection::Cut() {
  shutdown(socket_, SHUT_RDWR);
}

}  // namespace orvane_service
