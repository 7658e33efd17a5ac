// The one thread that runs the handlers, one request at a time.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

namespace host {

// What waits for its turn.
class Job {
 public:
  virtual ~Job() = default;
  virtual void run() = 0;     // on the handler thread
  virtual void cancel() = 0;  // from any thread: whatever run() waits for ends; run() is called all the same
};

class HandlerThread {
 public:
  HandlerThread();
  ~HandlerThread();
  HandlerThread(const HandlerThread&) = delete;
  HandlerThread& operator=(const HandlerThread&) = delete;

  // False once stop() was called: the job will not run.
  bool push(std::shared_ptr<Job> job);

  // Cancels what runs and waits, lets it end and ends the thread. False when a job did not end in time; the thread goes
  // on with it then and must be waited for with another call.
  bool stop(std::chrono::milliseconds patience);

 private:
  void work();
  std::shared_ptr<Job> next();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::shared_ptr<Job>> queue_;
  std::shared_ptr<Job> current_;
  bool stopping_ = false;
  bool ended_ = false;
  std::thread thread_;
};

}  // namespace host
