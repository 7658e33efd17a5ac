#include "simulator/applications/capture_service.h"

#include <arpa/inet.h>

#include <array>
#include <chrono>
#include <cstdint>

#include "platform/phone_application.h"
#include "platform/phone_root.h"
#include "simulator/applications/application.h"
#include "simulator/files.h"

namespace simulator {
namespace {

constexpr std::size_t kMaxCapture = 4 << 20;  // bytes; a longer capture ends there
constexpr std::uint32_t kSnapLength = 65535;
constexpr std::uint32_t kEthernet = 1;
constexpr std::uint16_t kSipPort = 5060;
constexpr std::size_t kIpHead = 20, kUdpHead = 8;
// Where nothing better is known (RFC 5737).
constexpr char kSomePhone[] = "192.0.2.46", kSomeServer[] = "192.0.2.1";

template <class Integer>
std::string littleEndian(Integer value) {
  std::string bytes;
  for (std::size_t i = 0; i < sizeof value; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xff);
  return bytes;
}

std::string bigEndian(std::size_t value) {
  return {static_cast<char>(value >> 8 & 0xff), static_cast<char>(value & 0xff)};
}

std::string fileHead() {
  return littleEndian(std::uint32_t{0xa1b2c3d4}) + littleEndian(std::uint16_t{2}) + littleEndian(std::uint16_t{4}) +
         littleEndian(std::uint32_t{0}) + littleEndian(std::uint32_t{0}) + littleEndian(kSnapLength) +
         littleEndian(kEthernet);
}

// An address and its four bytes.
struct Address {
  std::string text, bytes;
};

Address addressOf(const std::string& text, const char* otherwise) {
  in_addr address{};
  const bool isAddress = ::inet_pton(AF_INET, text.c_str(), &address) == 1;
  if (!isAddress) ::inet_pton(AF_INET, otherwise, &address);
  return {isAddress ? text : otherwise, std::string(reinterpret_cast<const char*>(&address), sizeof address)};
}

std::string hardwareAddress(const std::string& digits) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
  }
  bytes.resize(6, '\0');
  return bytes;
}

std::string ipHead(const Address& from, const Address& to, std::size_t length) {
  std::string head = std::string("\x45\0", 2) + bigEndian(kIpHead + length) + std::string("\0\0\x40\0\x40\x11\0\0", 8) +
                     from.bytes + to.bytes;
  std::uint32_t sum = 0;
  for (std::size_t i = 0; i < head.size(); i += 2) {
    sum +=
        static_cast<std::uint32_t>(static_cast<unsigned char>(head[i]) << 8 | static_cast<unsigned char>(head[i + 1]));
  }
  while (sum > 0xffff) sum = (sum & 0xffff) + (sum >> 16);
  return head.replace(10, 2, bigEndian(~sum & 0xffff));
}

std::string sipRequest(const std::string& method, const std::string& name, std::uint64_t number, const Address& from,
                       const Address& to) {
  const std::string count = std::to_string(number);
  return method + " sip:" + to.text + " SIP/2.0\r\nVia: SIP/2.0/UDP " + from.text + ":5060;branch=z9hG4bK" + count +
         "\r\nMax-Forwards: 70\r\nFrom: <sip:phone@" + from.text + ">;tag=" + count + "\r\nTo: <sip:" + to.text +
         ">\r\nCall-ID: " + count + "@" + from.text + "\r\nCSeq: " + count + " " + method + "\r\nSubject: " + name +
         "\r\nContent-Length: 0\r\n\r\n";
}

// One packet as it stands in the file.
std::string record(const Phone& phone, std::string_view payload, const Address& from, const Address& to) {
  const std::string frame = hardwareAddress("02005e000001") + hardwareAddress(phone.state.mac) + "\x08" +
                            std::string(1, '\0') + ipHead(from, to, kUdpHead + payload.size()) + bigEndian(kSipPort) +
                            bigEndian(kSipPort) + bigEndian(kUdpHead + payload.size()) + std::string(2, '\0') +
                            std::string(payload);
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto micros = std::chrono::duration_cast<std::chrono::microseconds>(now).count() % 1'000'000;
  const auto length = littleEndian(static_cast<std::uint32_t>(frame.size()));
  return littleEndian(static_cast<std::uint32_t>(phone.state.time())) +
         littleEndian(static_cast<std::uint32_t>(micros)) + length + length + frame;
}

void addPacket(Phone& phone, const std::string& method, const std::string& name) {
  std::string& packets = *phone.running.capture;
  const Address from = addressOf(phone.state.network.text(NetworkField::kLocalIPv4), kSomePhone);
  const Address to = addressOf(phone.state.network.text(NetworkField::kGatewayIPv4), kSomeServer);
  const std::string packet =
      record(phone, sipRequest(method, name, ++phone.running.capturedPackets, from, to), from, to);
  if (packets.size() + packet.size() <= kMaxCapture) packets += packet;
}

int captureState(Phone& phone, const JournalEntry&) {
  return phone.state.capturing ? 1 : 0;
}

void start(Phone& phone, const JournalEntry&) {
  if (phone.state.capturing) return;
  phone.state.capturing = true;
  phone.running.capture.emplace();
}

// A capture without traffic holds the keep-alive at least.
void stop(Phone& phone, const JournalEntry&) {
  if (!phone.state.capturing) return;
  if (phone.running.capture->empty()) addPacket(phone, "OPTIONS", "keep-alive");
  phone.state.capturing = false;
}

// 1 when there is a capture and its file is there.
int writeCapture(Phone& phone, const JournalEntry& message) {
  if (!phone.running.capture) return 0;
  if (phone.running.capture->empty()) addPacket(phone, "OPTIONS", "keep-alive");
  return replaceFile(phonePath(message.text), fileHead() + *phone.running.capture) ? 1 : 0;
}

constexpr MessageHandler kMessages[] = {
    {.message = kStartCapture, .react = start},
    {.message = kStopCapture, .react = stop},
    {.message = kCaptureState, .answer = captureState},
    {.message = kWriteCapture, .answer = writeCapture},
};

}  // namespace

void captureMessage(Phone& phone, const JournalEntry& message) {
  if (!phone.state.capturing || message.target == kCaptureService) return;
  const std::string target = message.target.empty() ? std::string() : messageName(message);
  addPacket(phone, "MESSAGE", target.empty() ? "broadcast" + messageName(message) : target);
}

constinit const Application captureService{kCaptureService, kMessages};

}  // namespace simulator
