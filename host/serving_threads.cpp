#include "host/serving_threads.h"

#include <utility>

namespace host {

ServingThreads::~ServingThreads() {
  stop(std::chrono::hours(1));
}

void ServingThreads::start(Connections& connections) {
  connections_ = &connections;
  first_ = std::thread([this] { work(); });
  second_ = std::thread([this] { work(); });
}

bool ServingThreads::push(std::shared_ptr<Job> job) {
  const std::lock_guard lock(mutex_);
  if (!stopping_) jobs_.push_back(std::move(job));
  return !stopping_;
}

bool ServingThreads::stop(std::chrono::milliseconds patience) {
  Lock lock(mutex_);
  stopping_ = true;
  if (current_) current_->cancel();
  for (const auto& job : jobs_) job->cancel();
  if (!changed_.wait_for(lock, patience, [this] { return jobs_.empty() && !running_; })) return false;
  ended_ = true;
  changed_.notify_all();
  lock.unlock();
  if (!first_.joinable()) return true;
  connections_->wake();
  first_.join();
  second_.join();
  return true;
}

void ServingThreads::work() {
  Lock lock(mutex_);
  while (waitToServe(lock)) serve(lock);
}

// False when there is nothing more to serve.
bool ServingThreads::waitToServe(Lock& lock) {
  while (!ended_) {
    const std::uint64_t seen = timesLeft_;
    changed_.wait_for(lock, kPatience, [this] { return wanted_ || ended_; });
    if (!served_ && (wanted_ || timesLeft_ == seen)) return !ended_;
    if (timesLeft_ != seen) continue;
    asleep_ = true;
    changed_.wait(lock, [&] { return timesLeft_ != seen || ended_; });
    asleep_ = false;
  }
  return false;
}

// Serves until the other thread does.
void ServingThreads::serve(Lock& lock) {
  for (take(); !ended_;) {
    lock.unlock();
    connections_->serve();
    lock.lock();
    if (!jobs_.empty() && !running_ && !runJobs(lock)) return;
  }
}

void ServingThreads::take() {
  served_ = true;
  wanted_ = false;
}

// False when the other thread has taken the connections over.
bool ServingThreads::runJobs(Lock& lock) {
  running_ = true;
  served_ = false;
  ++timesLeft_;
  if (asleep_) changed_.notify_all();
  while (!jobs_.empty()) runJob(lock);
  running_ = false;
  if (stopping_) changed_.notify_all();
  if (served_) return false;
  take();
  return true;
}

void ServingThreads::runJob(Lock& lock) {
  const std::shared_ptr<Job> job = std::move(jobs_.front());
  jobs_.pop_front();
  current_ = job.get();
  if (!served_ && job->readsConnection()) {
    wanted_ = true;
    changed_.notify_all();
  }
  lock.unlock();
  job->run();
  lock.lock();
  current_ = nullptr;
}

}  // namespace host
