// The two threads that serve the connections and run the handlers.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace host {

// What waits for its turn. One runs at a time.
class Job {
 public:
  virtual ~Job() = default;
  virtual void run() = 0;
  virtual void cancel() = 0;  // from any thread: whatever run() waits for ends; run() is called all the same
  // True when run() may wait for what comes over a connection.
  virtual bool readsConnection() const = 0;
};

// What the threads serve.
class Connections {
 public:
  // Serves what has come, and waits for it when there is nothing. Called by one thread at a time.
  virtual void serve() = 0;
  // Ends the wait, or the next one. From any thread.
  virtual void wake() = 0;

 protected:
  ~Connections() = default;
};

// One thread serves, and runs the jobs that this brought before it serves on: most requests are answered without a
// change of threads. The other one watches. When the connections are left alone for a moment, because a job takes its
// time, it serves them from then on, and the first thread watches in its place once it has run all jobs. So a job holds
// up other jobs, but no connection.
class ServingThreads {
 public:
  // How long the connections may be left alone.
  static constexpr std::chrono::milliseconds kPatience{1};

  ServingThreads() = default;
  ~ServingThreads();
  ServingThreads(const ServingThreads&) = delete;
  ServingThreads& operator=(const ServingThreads&) = delete;

  // `connections` must live until stop() has given true.
  void start(Connections& connections);

  // To be called from Connections::serve(). False once stop() was called: the job will not run.
  bool push(std::shared_ptr<Job> job);

  // Has the connections looked at again, once they are served. From any thread.
  void wake() { connections_->wake(); }

  // Cancels what runs and waits, lets it end and ends the threads. False when a job did not end in time; the threads go
  // on then and must be waited for with another call.
  bool stop(std::chrono::milliseconds patience);

 private:
  using Lock = std::unique_lock<std::mutex>;

  void work();
  bool waitToServe(Lock& lock);
  void serve(Lock& lock);
  void take();
  bool runJobs(Lock& lock);
  void runJob(Lock& lock);

  Connections* connections_ = nullptr;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::shared_ptr<Job>> jobs_;
  Job* current_ = nullptr;
  bool served_ = false;          // a thread has the connections
  std::uint64_t timesLeft_ = 0;  // how often they were left alone
  bool wanted_ = false;          // the other thread is to serve them now
  bool asleep_ = false;          // the other thread does not look until it is told
  bool running_ = false;         // a thread runs jobs
  bool stopping_ = false, ended_ = false;
  std::thread first_, second_;
};

}  // namespace host
