#include "host/serving_threads.h"

#include <utility>

namespace host {

HandlerThread::HandlerThread() : thread_([this] { work(); }) {}

HandlerThread::~HandlerThread() {
  stop({});
  if (thread_.joinable()) thread_.join();
}

bool HandlerThread::push(std::shared_ptr<Job> job) {
  const std::lock_guard lock(mutex_);
  if (stopping_) return false;
  queue_.push_back(std::move(job));
  if (queue_.size() == 1) changed_.notify_one();
  return true;
}

bool HandlerThread::stop(std::chrono::milliseconds patience) {
  std::unique_lock lock(mutex_);
  stopping_ = true;
  if (current_) current_->cancel();
  for (const auto& job : queue_) job->cancel();
  changed_.notify_all();
  if (!changed_.wait_for(lock, patience, [this] { return ended_; })) return false;
  lock.unlock();
  if (thread_.joinable()) thread_.join();
  return true;
}

// Null when there is no more to do.
std::shared_ptr<Job> HandlerThread::next() {
  std::unique_lock lock(mutex_);
  current_.reset();
  changed_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
  if (queue_.empty()) return nullptr;
  current_ = std::move(queue_.front());
  queue_.pop_front();
  return current_;
}

void HandlerThread::work() {
  while (const std::shared_ptr<Job> job = next()) job->run();
  const std::lock_guard lock(mutex_);
  ended_ = true;
  changed_.notify_all();
}

}  // namespace host
