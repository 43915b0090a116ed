// Uploads whose sender has not been seen to be logged in. The plug-in sends the film before the credentials, so their
// files must be taken; this keeps them from taking all there is.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <mutex>

namespace orvane_service {

/// Such uploads at once that go on. One that has stalled keeps nobody out; its connection will be given up.
constexpr size_t kMaxUnprovenUploads = 32;
/// With those that have stalled. Each holds an open file, a buffer and texts.
constexpr size_t kMaxUploads = 96;
/// An upload of which nothing has come for this long has stalled.
constexpr std::chrono::seconds kStalled(2);

/// May be used by any thread. Must outlive its tickets.
class UnprovenUploads {
 public:
  /// An upload's permission. Used by one thread.
  class Ticket {
   public:
    /// Gives the space back: the file must be gone, or have a place of its own.
    ~Ticket();
    Ticket(const Ticket&) = delete;
    Ticket& operator=(const Ticket&) = delete;

    /// The sender is logged in: there is no limit any more.
    void Prove() { proven_ = true; }

    /// More bytes have come. Returns false if they are too many for an upload whose sender is not known.
    bool Take(uint64_t bytes);

    /// The same for bytes that are announced and have not come. They are not counted.
    bool MayTake(uint64_t bytes) const;

   private:
    friend class UnprovenUploads;
    explicit Ticket(UnprovenUploads& uploads) : uploads_(uploads) {}

    UnprovenUploads& uploads_;
    std::list<Ticket*>::iterator place_;
    std::chrono::steady_clock::time_point progress_ = std::chrono::steady_clock::now();
    uint64_t taken_ = 0;
    uint64_t pending_ = 0;
    bool proven_ = false;
  };

  /// The function tells how much is free on the disk, in bytes.
  explicit UnprovenUploads(std::function<uint64_t()> free_bytes) : free_bytes_(std::move(free_bytes)) {}

  /// Lets an upload begin. Null if there are too many.
  std::unique_ptr<Ticket> Admit();

 private:
  bool IsWithinShare(uint64_t more) const;

  const std::function<uint64_t()> free_bytes_;
  mutable std::mutex mutex_;
  std::list<Ticket*> tickets_;
  // By all tickets together.
  uint64_t taken_ = 0;
};

}  // namespace orvane_service
