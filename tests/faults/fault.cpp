#include "tests/faults/fault.h"

#include <openssl/ssl.h>

#include <array>
#include <cstdio>

#include "jose/jwe.h"
#include "scenario/push_service.h"
#include "tests/faults/sealed_answers.h"

namespace quorvantis {
namespace {

using server::MisbehavingServerOptions;
using server::Misbehaviour;
using server::Stage;
using Kind = Misbehaviour::Kind;

const Outcome kUnusable{"onError: Error --> registerToken", "nothing"};
const Outcome kWithoutToken{"onRegisterToken: nil", "onRegisterToken: nil"};
const Outcome kToken{"onRegisterToken: t", "onRegisterToken: t"};
const Outcome kForged{"onRegisterToken: forged", "onRegisterToken: forged"};

const std::string kGoodBody = R"({"error":"no","token":"t"})";
const std::string kForgedBody = R"({"error":"no","token":"forged"})";
const std::string kChunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";

std::string withLength(const std::string& body, const std::string& length,
                       const std::string& status = "200 OK", const std::string& headers = "") {
  return "HTTP/1.1 " + status + "\r\n" + headers + "Content-Length: " + length + "\r\n\r\n" + body;
}

std::string answer(const std::string& body, const std::string& status = "200 OK",
                   const std::string& headers = "") {
  return withLength(body, std::to_string(body.size()), status, headers);
}

std::string sealedAnswer(const std::string& body) {
  return answer(body, "200 OK", "Content-Type: application/jose\r\n");
}

std::string chunk(const std::string& body) {
  std::array<char, 20> digits{};
  std::snprintf(digits.data(), digits.size(), "%zx", body.size());
  return std::string(digits.data()) + "\r\n" + body + "\r\n";
}

std::string repeated(const std::string& piece, std::size_t times) {
  std::string all;
  for (std::size_t i = 0; i < times; ++i) all += piece;
  return all;
}

/// {"error":"no","token":"t"} as gzip writes it.
std::string gzipped() {
  constexpr unsigned char kBytes[] = {0x1f, 0x8b, 0x08, 0x00, 0x00, 0x00, 0x00, 0x00, 0x02, 0x03, 0xab,
                                      0x56, 0x4a, 0x2d, 0x2a, 0xca, 0x2f, 0x52, 0xb2, 0x52, 0xca, 0xcb,
                                      0x57, 0xd2, 0x51, 0x2a, 0xc9, 0xcf, 0x4e, 0xcd, 0x03, 0x72, 0x4a,
                                      0x94, 0x6a, 0x01, 0xf0, 0xc8, 0xce, 0x48, 0x1a, 0x00, 0x00, 0x00};
  return {reinterpret_cast<const char*>(kBytes), sizeof kBytes};
}

void addConnections(std::vector<Fault>& faults) {
  faults.push_back({.name = "connection refused", .outcome = kUnusable, .isRefusal = true});
  const auto add = [&](const char* name, Stage reached, bool silent) {
    const auto interrupt = [=](MisbehavingServerOptions& options) {
      options.reached = reached;
      options.silent = silent;
    };
    faults.push_back({.name = name, .outcome = kUnusable, .beforehand = interrupt, .waits = silent});
  };
  add("reset once connected", Stage::accepted, false);
  add("reset in the handshake", Stage::greeted, false);
  add("reset after the handshake", Stage::secured, false);
  add("reset in the request", Stage::requestBegun, false);
  add("silence instead of a handshake", Stage::accepted, true);
  add("silence in the handshake", Stage::greeted, true);
  add("silence while the request is sent", Stage::secured, true);
  faults.push_back({"plain HTTP instead of TLS", kUnusable, {}, [](MisbehavingServerOptions& options) {
                      options.plain = goodAnswer();
                    }});
  faults.push_back({"TLS 1.1", kUnusable, {}, [](MisbehavingServerOptions& options) {
                      options.highestTlsVersion = TLS1_1_VERSION;
                    }});
}

void addCertificates(std::vector<Fault>& faults, const server::Authority& authority) {
  using std::chrono::hours;
  const auto add = [&](const char* name, const server::Identity& identity) {
    faults.push_back({name, kUnusable, {}, [identity](MisbehavingServerOptions& options) {
                        options.identity = identity;
                      }});
  };
  const std::string host = scenario::kPushHost;
  add("certificate expired", authority.issue(host, {.notBefore = hours(-2), .notAfter = hours(-1)}));
  add("certificate not valid yet", authority.issue(host, {.notBefore = hours(1), .notAfter = hours(2)}));
  add("certificate self-signed", authority.issue(host, {.selfSigned = true}));
  add("certificate of another authority", server::Authority().issue(host));
  add("certificate of another host", authority.issue(kElsewhere));
  add("certificate of a host below", authority.issue("below." + host));
  add("certificate with a weak key", authority.issue(host, {.rsaBits = 1024}));
}

void addEnds(std::vector<Fault>& faults) {
  const std::string head = "HTTP/1.1 200 OK\r\n";
  const std::string half = withLength(R"({"token":)", "100");
  const auto add = [&](const char* name, Kind kind, const std::string& bytes) {
    const bool waits = kind == Kind::silence || kind == Kind::trickle;
    faults.push_back({.name = name, .outcome = kUnusable, .behaviour = {kind, bytes}, .waits = waits});
  };
  add("reset after the request", Kind::cut, "");
  add("reset in the status line", Kind::cut, "HTTP/1.1 2");
  add("reset in the head", Kind::cut, head + "Content-");
  add("reset in the body", Kind::cut, half);
  add("reset at the end of a body without a length", Kind::cut, head + "\r\n" + kGoodBody);
  add("closed after the request", Kind::close, "");
  add("closed in the head", Kind::close, head + "Content-");
  add("closed in the body", Kind::close, half);
  add("a body without a length, and no close_notify", Kind::drop, head + "\r\n" + kGoodBody);
  add("a blank before a length's colon, and no close_notify", Kind::drop,
      head + "Content-Length : 100\r\n\r\n" + kGoodBody);
  add("a blank before a coding's colon, and no close_notify", Kind::drop,
      head + "Transfer-Encoding : chunked\r\n\r\n" + kGoodBody);
  add("a length on a folded line, and no close_notify", Kind::drop,
      head + "X: y\r\n Content-Length: 100\r\n\r\n" + kGoodBody);
  add("no answer", Kind::silence, "");
  add("silence in the head", Kind::silence, head + "Content-");
  add("silence in the body", Kind::silence, half);
  add("a byte a second", Kind::trickle, goodAnswer());
  faults.push_back({"reset after a whole answer", kToken, {Kind::cut, goodAnswer()}});
  faults.push_back({"a body without a length", kToken, {Kind::close, head + "\r\n" + kGoodBody}});
}

void addLengths(std::vector<Fault>& faults) {
  const auto add = [&](const char* name, const Outcome& outcome, const std::string& bytes,
                       Kind kind = Kind::answer) {
    faults.push_back(
        {.name = name, .outcome = outcome, .behaviour = {kind, bytes}, .waits = kind == Kind::silence});
  };
  const std::string size = std::to_string(kGoodBody.size());
  const std::string forged = answer(kForgedBody);

  add("more announced than sent", kUnusable, withLength(kGoodBody, "27"), Kind::close);
  add("more announced than sent, and kept open", kUnusable, withLength(kGoodBody, "27"), Kind::silence);
  add("less announced than sent", kToken, withLength(kGoodBody + std::string(500, 'x'), size));
  add("nothing announced, and something sent", kUnusable, withLength(kGoodBody, "0"));
  add("a second answer that nobody asked for", kToken, answer(kGoodBody) + forged);
  add("two lengths", kUnusable, withLength(kGoodBody, size, "200 OK", "Content-Length: 7\r\n"), Kind::close);
  add("a negative length", kUnusable, withLength(kGoodBody, "-1"), Kind::silence);
  add("a length of letters", kUnusable, withLength(kGoodBody, "many"), Kind::silence);
  add("a length beyond 64 bits", kUnusable, withLength(kGoodBody, "99999999999999999999"), Kind::silence);
  add("a length of 1 TiB", kUnusable, withLength(kGoodBody, "1099511627776"), Kind::silence);
  add("a body over the limit", kUnusable, answer(std::string((1 << 20) + 1, 'x')));
  add("a body without end", kUnusable, "HTTP/1.1 200 OK\r\n\r\n" + std::string(100'000, 'x'), Kind::endless);
  add("chunks without end", kUnusable, kChunked + repeated(chunk(std::string(10'000, 'x')), 10),
      Kind::endless);
  add("a head without end", kUnusable, "HTTP/1.1 100 Continue\r\nX: " + std::string(1000, 'x') + "\r\n\r\n",
      Kind::endless);
  add("a header of 10 MiB", kUnusable,
      answer(kGoodBody, "200 OK", "X: " + std::string(std::size_t{10} << 20, 'x') + "\r\n"));
  add("a million headers", kUnusable, answer(kGoodBody, "200 OK", repeated("X: x\r\n", 1'000'000)));
  add("a head of 60 KiB", kToken,
      answer(kGoodBody, "200 OK", repeated("X: " + std::string(995, 'x') + "\r\n", 60)));
}

void addEncodings(std::vector<Fault>& faults) {
  const auto add = [&](const char* name, const Outcome& outcome, const std::string& bytes,
                       Kind kind = Kind::answer) {
    faults.push_back({name, outcome, {kind, bytes}});
  };
  const auto chunks = [](const std::string& rest) { return kChunked + chunk(R"({"error":)") + rest; };
  add("compressed by gzip", kWithoutToken, answer(gzipped(), "200 OK", "Content-Encoding: gzip\r\n"));
  add("an unknown compression", kToken, answer(kGoodBody, "200 OK", "Content-Encoding: x-own\r\n"));
  add("compressed on the way", kUnusable,
      "HTTP/1.1 200 OK\r\nTransfer-Encoding: gzip, chunked\r\n\r\n" + chunk(gzipped()) + "0\r\n\r\n");
  add("an unknown coding on the way", kUnusable,
      "HTTP/1.1 200 OK\r\nTransfer-Encoding: x-own\r\n\r\n" + kGoodBody, Kind::close);
  add("chunks", kToken, chunks(chunk(R"("no","token":"t"})") + "0\r\n\r\n"));
  add("chunks and a length", kToken,
      "HTTP/1.1 200 OK\r\nContent-Length: 3\r\nTransfer-Encoding: chunked\r\n\r\n" + chunk(kGoodBody) +
          "0\r\n\r\n");
  add("chunks whose size is not a number", kUnusable, chunks("xyz\r\n{}\r\n0\r\n\r\n"));
  add("chunks of a negative size", kUnusable, chunks("-5\r\n{}\r\n0\r\n\r\n"));
  add("chunks larger than 64 bits", kUnusable, chunks("fffffffffffffffff\r\n{}\r\n0\r\n\r\n"));
  add("chunks of 8 EiB", kUnusable, chunks("7fffffffffffffff\r\n{}"), Kind::close);
  add("chunks that are longer than they say", kUnusable, chunks("2\r\n{}{}{}\r\n0\r\n\r\n"));
  add("chunks that end amid one", kUnusable, chunks("64\r\n{"), Kind::close);
  add("chunks without a last one", kUnusable, chunks(""), Kind::close);
  add("trailers without end", kUnusable,
      chunks("0\r\n" + repeated("X: " + std::string(990, 'x') + "\r\n", 5000)), Kind::close);
}

void addStatuses(std::vector<Fault>& faults) {
  const auto add = [&](const std::string& name, const Outcome& outcome, const std::string& bytes,
                       Kind kind = Kind::answer) {
    faults.push_back(
        {.name = name, .outcome = outcome, .behaviour = {kind, bytes}, .waits = kind == Kind::silence});
  };
  add("100 before the answer", kToken, "HTTP/1.1 100 Continue\r\n\r\n" + goodAnswer());
  add("103 before the answer", kToken, "HTTP/1.1 103 Early Hints\r\nLink: </x>\r\n\r\n" + goodAnswer());
  add("100 and no more", kUnusable, "HTTP/1.1 100 Continue\r\n\r\n", Kind::silence);
  add("101", kUnusable, "HTTP/1.1 101 Switching\r\nUpgrade: x\r\nConnection: upgrade\r\n\r\n" + kGoodBody,
      Kind::close);
  for (const char* status : {"201 Created", "203 Other", "206 Part", "226 IM Used", "299 Odd"}) {
    add(std::string(status, 3), kToken, answer(kGoodBody, status));
  }
  add("204", kUnusable, "HTTP/1.1 204 None\r\n\r\n");
  add("204 with a body", kUnusable, answer(kGoodBody, "204 None"));
  add("205 with a body", kToken, answer(kGoodBody, "205 Reset"));
  for (const char* status : {"300 Many", "304 Same", "400 Bad", "401 Who", "403 No", "404 None", "407 Proxy",
                             "408 Late", "413 Large", "429 Slow", "500 Sorry", "502 Gate", "503 Busy",
                             "511 Log in", "599 Odd", "600 Odd", "999 Odd"}) {
    add(std::string(status, 3), kUnusable,
        answer(kGoodBody, status,
               "WWW-Authenticate: Basic realm=x\r\nProxy-Authenticate: Basic realm=x\r\nRetry-After: 0\r\n"));
  }
  for (const char* status : {"301 Moved", "302 Found", "303 Other", "307 Temporary", "308 Permanent"}) {
    const std::string number(status, 3);
    const auto to = [&](const std::string& url) { return answer("", status, "Location: " + url + "\r\n"); };
    add(number + " to the same host", kUnusable, to("/apis/other.php"));
    add(number + " to another host", kUnusable, to(std::string("https://") + kElsewhere + "/"));
    add(number + " to plain HTTP", kUnusable, to(std::string("http://") + scenario::kPushHost + "/"));
  }
  add("a refresh to another host", kToken,
      answer(kGoodBody, "200 OK", std::string("Refresh: 0; url=https://") + kElsewhere + "/\r\n"));
  add("HTTP/0.9", kUnusable, kGoodBody, Kind::close);
  add("HTTP/1.0", kToken, "HTTP/1.0 200 OK\r\n\r\n" + kGoodBody, Kind::close);
  add("HTTP/2 without having agreed on it", kUnusable, "HTTP/2 200\r\n\r\n" + kGoodBody, Kind::close);
  add("another protocol", kUnusable, "220 mail ready\r\n", Kind::close);
  add("cookies, pins and other services", kToken,
      answer(kGoodBody, "200 OK",
             std::string("Set-Cookie: a=b\r\nStrict-Transport-Security: max-age=9999\r\nAlt-Svc: h2=\"") +
                 kElsewhere + ":443\"\r\n"));
  add("a header without a colon", kUnusable, "HTTP/1.1 200 OK\r\nnonsense\r\n\r\n" + kGoodBody, Kind::close);
  add("a header with a NUL", kUnusable, answer(kGoodBody, "200 OK", std::string("X: a\0b\r\n", 8)));
}

void addBodies(std::vector<Fault>& faults) {
  const auto add = [&](const char* name, const Outcome& outcome, const std::string& body) {
    faults.push_back({name, outcome, {Kind::answer, answer(body)}});
  };
  constexpr std::size_t kDeep = 100'000;
  add("an empty body", kUnusable, "");
  add("the body error", kUnusable, "error");
  add("a refusal", {"onError: x", "nothing"}, R"({"error":"si","errorDescripcion":"x","token":"t"})");
  add("a body of NULs", kWithoutToken, std::string(1000, '\0'));
  add("invalid UTF-8", kWithoutToken, "{\"token\":\"\xC3\x28\xFF\"}");
  add("UTF-16", kWithoutToken, std::string("\xFF\xFE{\0}\0", 6));
  add("plain text", kWithoutToken, "service unavailable");
  add("a page of HTML", kWithoutToken, "<!DOCTYPE html><title>Log in to the network</title>");
  add("half of a JSON text", kWithoutToken, R"({"error":"no","token":"t)");
  add("arrays a hundred thousand levels deep", kWithoutToken, repeated("[", kDeep) + repeated("]", kDeep));
  add("objects a hundred thousand levels deep", kWithoutToken,
      repeated(R"({"a":)", kDeep) + "1" + repeated("}", kDeep));
  add("a token a hundred thousand levels deep", kWithoutToken,
      R"({"error":"no","token":)" + repeated("[", kDeep) + repeated("]", kDeep) + "}");
  add("deep and never closed", kWithoutToken, repeated(R"([{"a":)", kDeep));
  add("a number of a hundred thousand digits", kWithoutToken, R"({"token":)" + repeated("9", kDeep) + "}");
}

void addSealed(std::vector<Fault>& faults) {
  const auto add = [&](const std::string& name, const Outcome& outcome, const std::string& body) {
    faults.push_back({name, outcome, {Kind::answer, sealedAnswer(body)}});
  };
  const std::string agreed = sealed::kAsAgreed;
  std::array<std::size_t, 5> begins{};
  for (std::size_t part = 1; part < begins.size(); ++part)
    begins[part] = agreed.find('.', begins[part - 1]) + 1;
  const auto changed = [&](std::size_t part) {
    std::string text = agreed;
    char& letter = text[begins[part] + 5];
    letter = letter == 'A' ? 'B' : 'A';
    return text;
  };
  std::string secondPart = agreed;
  secondPart.insert(begins[1], "AAAA");

  add("sealed as agreed", kForged, agreed);
  add("sealed, its first part changed", kUnusable, changed(0));
  add("sealed, its second part not empty", kUnusable, secondPart);
  add("sealed, its third part changed", kUnusable, changed(2));
  add("sealed, its fourth part changed", kUnusable, changed(3));
  add("sealed, its fifth part changed", kUnusable, changed(4));
  add("sealed, cut in the fifth part", kUnusable, agreed.substr(0, agreed.size() - 4));
  add("sealed, cut before the fifth part", kUnusable, agreed.substr(0, begins[4] - 1));
  add("sealed, cut in the fourth part", kUnusable, agreed.substr(0, begins[3] + 8));
  add("sealed, with a sixth part", kUnusable, agreed + ".AAAA");
  add("sealed with another key", kUnusable, jose::seal(kForgedBody, std::string(32, 'k')));
  add("sealed with the algorithm none", kUnusable, sealed::kAlgorithmNone);
  add("not sealed, with the algorithm none", kUnusable, sealed::kUnsecured);
  add("sealed with A256GCM", kUnusable, sealed::kA256GCM);
  add("sealed with A256KW", kUnusable, sealed::kA256KW);
  add("sealed and zipped", kUnusable, sealed::kZip);
  add("sealed with an unknown crit", kUnusable, sealed::kUnknownCrit);
  add("said to be sealed, and not", kUnusable, kForgedBody);
  add("said to be sealed, and empty", kUnusable, "");
  add("sealed, and holding nothing", kUnusable, jose::seal("", scenario::kHashKey));
  add("sealed, and holding no JSON", kWithoutToken, jose::seal("plain", scenario::kHashKey));
  faults.push_back({"sealed, and not said to be", kWithoutToken, {Kind::answer, answer(agreed)}});
}

}  // namespace

std::string goodAnswer() {
  return answer(kGoodBody);
}

std::vector<Fault> allFaults(const server::Authority& authority) {
  std::vector<Fault> faults;
  addConnections(faults);
  addCertificates(faults, authority);
  addEnds(faults);
  addLengths(faults);
  addEncodings(faults);
  addStatuses(faults);
  addBodies(faults);
  addSealed(faults);
  return faults;
}

}  // namespace quorvantis
