#include "UnprovenUploads.h"

#include <algorithm>

namespace orvane_service {
namespace {

// How much may come until the others are told and the disk is asked again.
constexpr uint64_t kStep = 64 * 1024;

}  // namespace

UnprovenUploads::Ticket::~Ticket() {
  std::lock_guard<std::mutex> lock(uploads_.mutex_);
  uploads_.taken_ -= taken_;
  uploads_.tickets_.erase(place_);
}

bool UnprovenUploads::Ticket::MayTake(uint64_t bytes) const {
  std::lock_guard<std::mutex> lock(uploads_.mutex_);
  return proven_ || uploads_.IsWithinShare(bytes);
}

bool UnprovenUploads::Ticket::Take(uint64_t bytes) {
  pending_ += bytes;
  if (pending_ < kStep) return true;
  std::lock_guard<std::mutex> lock(uploads_.mutex_);
  progress_ = std::chrono::steady_clock::now();
  if (!proven_ && !uploads_.IsWithinShare(pending_)) return false;
  if (!proven_) {
    taken_ += pending_;
    uploads_.taken_ += pending_;
  }
  pending_ = 0;
  return true;
}

std::unique_ptr<UnprovenUploads::Ticket> UnprovenUploads::Admit() {
  std::lock_guard<std::mutex> lock(mutex_);
  const auto now = std::chrono::steady_clock::now();
  const auto going_on =
      std::count_if(tickets_.begin(), tickets_.end(), [&](const Ticket* t) { return now - t->progress_ < kStalled; });
  if (tickets_.size() >= kMaxUploads || static_cast<size_t>(going_on) >= kMaxUnprovenUploads) return nullptr;
  std::unique_ptr<Ticket> ticket(new Ticket(*this));
  ticket->place_ = tickets_.insert(tickets_.end(), ticket.get());
  return ticket;
}

// Half of what was free before these uploads began.
bool UnprovenUploads::IsWithinShare(uint64_t more) const {
  return taken_ + more <= (free_bytes_() + taken_) / 2;
}

}  // namespace orvane_service
