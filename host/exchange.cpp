#include "host/exchange.h"

#include <map>
#include <string>
#include <utility>

#include "host/access_log.h"
#include "host/connection_head.h"
#include "host/http_text.h"
#include "host/log.h"
#include "host/server_core.h"

namespace host {
namespace {
using Clock = std::chrono::steady_clock;

// How much of a body that nobody wants is let pass by, so that the client comes to read the answer.
constexpr std::size_t kMaxPassedBy = 4;  // times the upload limit

Answer redirectAnswer(const char* location) {
  Answer answer;
  answer.status = 302;
  answer.setHeader("Location", location);
  return answer;
}

std::string textOf(SpoolBuffer& buffer) {
  std::string text(buffer.size(), '\0');
  std::size_t size = 0;
  while (const std::size_t count = buffer.read(size, text.data() + size, text.size() - size)) size += count;
  text.resize(size);
  return text;
}

MHD_Response* makeResponse(Answer& answer) {
  if (answer.file) return MHD_create_response_from_fd64(answer.fileSize, answer.file.release());
  auto* body = new std::string(std::move(answer.body));
  const auto release = [](void* text) { delete static_cast<std::string*>(text); };
  return MHD_create_response_from_buffer_with_free_callback_cls(body->size(), body->data(), release, body);
}
}  // namespace

Exchange::Exchange(ServerCore& core, MHD_Connection* connection, const Peer& peer, const char* method,
                   const char* version)
    : core_(core),
      connection_(connection),
      head_(readHead(connection, peer, method, version)),
      admission_(admit(head_, core.rules, core.rebooting())),
      body_(core.spoolFolder),
      expectsContinue_(equalsIgnoreCase(headerOf(connection, "Expect"), "100-continue")),
      rate_(core.settings.rateWindow),
      began_(Clock::now()),
      lastPiece_(began_) {
  if (admission_.refusal) refuse(*admission_.refusal);
}

MHD_Result Exchange::proceed(const char* data, std::size_t* size) {
  switch (stage_) {
    case Stage::kHeaders:
      return takeHeaders();
    case Stage::kHeld:
      stage_ = Stage::kBody;
      // An answer that did not wait for the body spares the client from sending it.
      if (!expectsContinue_ || !stream_->hasAnswer()) return MHD_YES;
      return send(std::move(refusal_ ? *refusal_ : answer_));
    case Stage::kBody:
      return *size > 0 ? takePiece(data, size) : takeEnd();
    default:
      return takeAnswer();
  }
}

void Exchange::refuse(const Refusal& refusal) {
  refusal_ = answerTo(refusal, head_.wantsJson);
  if (stream_) stream_->abort();
}

// --- The body

MHD_Result Exchange::takeHeaders() {
  stage_ = Stage::kBody;
  if (refusal_ && expectsContinue_) return send(std::move(*refusal_));
  if (refusal_ || head_.contentLength <= kMaxGatheredBody) return MHD_YES;
  stage_ = Stage::kHeld;
  stream_ = std::make_shared<BodyStream>(static_cast<Pausable&>(*this), core_.settings.rateWindow);
  stream_->holdUntilRead();
  startLongTurn();
  return MHD_YES;
}

// Gives the request to the handler while its body is still to come.
void Exchange::startLongTurn() {
  body_.setStream(stream_);
  if (core_.threads.push(shared_from_this())) return;
  refuse({503, {}});
  stream_->answered();
}

MHD_Result Exchange::takePiece(const char* data, std::size_t* size) {
  if (stream_ && stream_->tooSlow()) return MHD_NO;
  if (refusal_ || (stream_ && stream_->hasAnswer())) return passBy(size);
  if (stream_) return passOn(data, size);
  return keepsPace(*size) ? gather({data, std::exchange(*size, 0)}) : MHD_NO;
}

// A sender that nobody is waiting for has to be quick as well.
bool Exchange::keepsPace(std::size_t bytes) {
  const auto now = Clock::now();
  const auto waited = std::chrono::floor<std::chrono::milliseconds>(now - std::exchange(lastPiece_, now));
  // While the connection was held up, the sender could not be any quicker.
  return rate_.add(bytes, std::exchange(wasPaused_, false) ? std::chrono::milliseconds() : waited);
}

// Lets bytes go by that nobody wants.
MHD_Result Exchange::passBy(std::size_t* size) {
  const std::size_t bytes = std::exchange(*size, 0);
  received_ += bytes;
  return keepsPace(bytes) && received_ <= kMaxPassedBy * core_.settings.maxUpload ? MHD_YES : MHD_NO;
}

MHD_Result Exchange::passOn(const char* data, std::size_t* size) {
  lastPiece_ = Clock::now();
  wasPaused_ = false;
  const std::size_t taken = stream_->offer({data, *size});
  *size -= taken;
  received_ += taken;
  if (received_ > admission_.maxBody) refuse({413, {}});
  return MHD_YES;
}

MHD_Result Exchange::gather(std::string_view piece) {
  received_ += piece.size();
  if (received_ > admission_.maxBody) {
    refuse({413, {}});
  } else if (!body_.gathered().append(piece)) {
    refuse({507, {}});
  } else if (received_ > kMaxGatheredBody) {  // a chunked body has turned out to be long
    head_.contentLength = admission_.maxBody;
    stream_ = std::make_shared<BodyStream>(static_cast<Pausable&>(*this), core_.settings.rateWindow);
    startLongTurn();
  }
  return MHD_YES;
}

MHD_Result Exchange::takeEnd() {
  if (refusal_) return send(std::move(*refusal_));
  if (stream_) return takeEndOfStream();
  switch (admission_.route) {
    case Route::kHome:
      return send(redirectAnswer(kHomePage));
    case Route::kStatic:
      return send(staticAnswer());
    case Route::kUserFile:
      return send(userFileAnswer());
    case Route::kSimulator:
      return send(simulatorAnswer());
    default:
      return waitForTurn();
  }
}

MHD_Result Exchange::takeEndOfStream() {
  if (stream_->tooSlow()) return MHD_NO;
  stream_->end();
  if (!stream_->pauseUntilAnswered()) return send(std::move(answer_));
  stage_ = Stage::kTurn;
  return MHD_YES;
}

MHD_Result Exchange::waitForTurn() {
  stage_ = Stage::kTurn;
  return core_.threads.push(shared_from_this()) ? MHD_YES : send(errorAnswer(503, head_.wantsJson));
}

// Mostly the answer is there when the connection is looked at again. Only when it is not is the connection suspended,
// which costs several system calls.
MHD_Result Exchange::takeAnswer() {
  if (turn_ == Turn::kAnswered) return send(std::move(answer_));
  pause();
  Turn turn = Turn::kPending;
  if (!turn_.compare_exchange_strong(turn, Turn::kPaused)) resume();
  return MHD_YES;
}

void Exchange::pause() {
  wasPaused_ = true;
  MHD_suspend_connection(connection_);
}

void Exchange::resume() {
  MHD_resume_connection(connection_);
  core_.threads.wake();
}

void Exchange::connectionEnded() {
  if (stream_) stream_->abort();
}

// --- The turn

void Exchange::run() {
  answer_ = core_.stopping ? errorAnswer(503, head_.wantsJson) : turnAnswer();
  const Turn before = turn_.exchange(Turn::kAnswered);
  if (stream_) stream_->answered();
  if (before == Turn::kPaused) resume();
}

Answer Exchange::turnAnswer() {
  return admission_.route == Route::kSettings ? core_.runner.settings(head_) : core_.runner.run(head_, body_);
}

void Exchange::cancel() {
  if (stream_) stream_->abort();
}

// --- The answer

Answer Exchange::staticAnswer() {
  auto answer = core_.files.answer(
      {head_.path, headerOf(connection_, "Accept-Encoding"), headerOf(connection_, "If-None-Match")});
  return answer ? std::move(*answer) : errorAnswer(404, head_.wantsJson);
}

Answer Exchange::userFileAnswer() {
  std::optional<Answer> answer;
  for (const auto& [prefix, folder] : core_.settings.userFolders) {
    if (!head_.path.starts_with(prefix) || !core_.runner.isLoggedIn(head_)) continue;
    const std::string_view name = std::string_view(head_.path).substr(prefix.size());
    answer = userFile(core_.settings.root / folder, {name, {}, headerOf(connection_, "If-None-Match")});
  }
  return answer ? std::move(*answer) : errorAnswer(404, head_.wantsJson);
}

Answer Exchange::simulatorAnswer() {
  std::map<std::string, std::string> query;
  for (const Fields::Field& field : head_.query.all()) query.emplace(field.name, field.values.front());
  const std::string method = head_.method == "HEAD" ? "GET" : head_.method;
  MountReply reply = core_.settings.simulator(method, head_.path, query, textOf(body_.gathered()));
  Answer answer;
  answer.status = reply.status;
  answer.setHeader("Content-Type", std::move(reply.contentType));
  answer.body = std::move(reply.body);
  return answer;
}

MHD_Result Exchange::send(Answer answer) {
  addCommonHeaders(answer, head_.secure);
  const int status = answer.status;
  const std::size_t bytes = answer.size();
  MHD_Response* response = makeResponse(answer);
  if (!response) return MHD_NO;
  for (const Header& header : answer.headers) {
    if (MHD_add_response_header(response, header.name.c_str(), header.value.c_str()) == MHD_NO) {
      logLine({"header dropped: ", printable(header.name, 64)});
    }
  }
  const MHD_Result result = MHD_queue_response(connection_, static_cast<unsigned>(status), response);
  MHD_destroy_response(response);
  if (core_.settings.accessLog) {
    const auto duration = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - began_);
    logLine({accessLine(head_, status, bytes, duration)});
  }
  return result;
}

}  // namespace host
