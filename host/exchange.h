// One request on its way through the server.
#pragma once

#include <microhttpd.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <string_view>

#include "host/admission.h"
#include "host/answer.h"
#include "host/body.h"
#include "host/body_stream.h"
#include "host/rate_guard.h"
#include "host/request_head.h"
#include "host/serving_threads.h"

namespace host {

struct Peer;
struct ServerCore;

// Driven by the thread that serves the connections. In its turn, which may be that of another thread, it runs the
// handler; when this takes its time, the connection is suspended, so no client holds a thread.
class Exchange final : public Job, private Pausable, public std::enable_shared_from_this<Exchange> {
 public:
  Exchange(ServerCore& core, MHD_Connection* connection, const Peer& peer, const char* method, const char* version);

  // A call of libmicrohttpd's access handler: first with the headers, then a piece of the body at a time, last when all
  // is there; and again after each suspension. MHD_NO drops the connection.
  MHD_Result proceed(const char* data, std::size_t* size);
  // The connection is through with the request, or gone.
  void connectionEnded();

  void run() override;
  void cancel() override;
  bool readsConnection() const override { return stream_ != nullptr; }

 private:
  enum class Stage {
    kHeaders,  // nothing decided yet
    kHeld,     // a long body waits outside until the handler wants it or has answered
    kBody,
    kTurn,  // all is received, the handler has it
  };

  enum class Turn { kPending, kPaused, kAnswered };  // kPaused: and the connection waits for it

  void refuse(const Refusal& refusal);

  MHD_Result takeHeaders();
  MHD_Result takePiece(const char* data, std::size_t* size);
  MHD_Result gather(std::string_view piece);
  MHD_Result passOn(const char* data, std::size_t* size);
  MHD_Result passBy(std::size_t* size);
  MHD_Result takeEnd();
  MHD_Result takeEndOfStream();
  MHD_Result waitForTurn();
  void startLongTurn();
  MHD_Result takeAnswer();
  bool keepsPace(std::size_t bytes);

  Answer turnAnswer();
  Answer simulatorAnswer();
  Answer staticAnswer();
  Answer userFileAnswer();
  MHD_Result send(Answer answer);

  void pause() override;
  void resume() override;

  ServerCore& core_;
  MHD_Connection* connection_;
  RequestHead head_;
  const Admission admission_;
  Body body_;
  std::shared_ptr<BodyStream> stream_;
  std::optional<Answer> refusal_;  // decided without a handler, sent in place of any other answer
  Answer answer_;                  // of the handler
  std::atomic<Turn> turn_ = Turn::kPending;
  Stage stage_ = Stage::kHeaders;
  bool expectsContinue_ = false;
  std::size_t received_ = 0;
  RateGuard rate_;
  bool wasPaused_ = false;  // since the last piece
  std::chrono::steady_clock::time_point began_, lastPiece_;
};

}  // namespace host
