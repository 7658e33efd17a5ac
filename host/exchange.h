// One request on its way through the server.
#pragma once

#include <microhttpd.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string_view>

#include "host/admission.h"
#include "host/answer.h"
#include "host/body.h"
#include "host/body_stream.h"
#include "host/serving_threads.h"
#include "host/rate_guard.h"
#include "host/request_head.h"

namespace host {

struct Peer;
struct ServerCore;

// Driven by the connection's thread; its turn runs on the handler thread. While a request waits for its turn its
// connection is suspended, so no client holds a thread.
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

 private:
  enum class Stage {
    kHeaders,  // nothing decided yet
    kHeld,     // a long body waits outside until the handler wants it or has answered
    kBody,
    kTurn,  // all is received, the handler has it
  };

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
  bool keepsPace(std::size_t bytes);

  Answer simulatorAnswer();
  Answer staticAnswer();
  MHD_Result send(Answer answer);

  void pause() override;
  void resume() override { MHD_resume_connection(connection_); }

  ServerCore& core_;
  MHD_Connection* connection_;
  RequestHead head_;
  const Admission admission_;
  Body body_;
  std::shared_ptr<BodyStream> stream_;
  std::optional<Answer> refusal_;  // decided without a handler, sent in place of any other answer
  Answer answer_;                  // of the handler
  Stage stage_ = Stage::kHeaders;
  bool expectsContinue_ = false;
  std::size_t received_ = 0;
  RateGuard rate_;
  bool wasPaused_ = false;  // since the last piece
  std::chrono::steady_clock::time_point began_, lastPiece_;
};

}  // namespace host
