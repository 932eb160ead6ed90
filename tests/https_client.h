// An HTTPS client over libcurl, which trusts any certificate and keeps its connection. One thread each.
#pragma once

#include <curl/curl.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>

#include "base/ascii.h"
#include "base/c_handle.h"

namespace quorvantis::tests {

class HttpsClient {
 public:
  struct Answer {
    int status = 0;
    std::string body;
    std::map<std::string, std::string> headers;  ///< names in lower case
  };

  explicit HttpsClient(std::uint16_t port) : origin_("https://127.0.0.1:" + std::to_string(port)) {
    static const CURLcode kStarted = curl_global_init(CURL_GLOBAL_DEFAULT);
    easy_.reset(curl_easy_init());
    if (kStarted != CURLE_OK || !easy_) throw std::runtime_error("libcurl does not start");
  }

  /// Nothing when there was no answer.
  std::optional<Answer> send(const std::string& method, const std::string& path, const std::string& type,
                             const std::string& body) {
    begin(method, path, type);
    if (!body.empty() || method == "POST") {
      curl_easy_setopt(easy_.get(), CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
      curl_easy_setopt(easy_.get(), CURLOPT_POSTFIELDS, body.data());
    }
    return perform();
  }

  std::optional<Answer> post(const std::string& path, const std::string& type, const std::string& body) {
    return send("POST", path, type, body);
  }

  /// In chunks, until `nextPiece` returns an empty one.
  std::optional<Answer> postPieces(const std::string& path, const std::string& type,
                                   std::function<std::string()> nextPiece) {
    begin("POST", path, type);
    curl_easy_setopt(easy_.get(), CURLOPT_POST, 1L);
    curl_easy_setopt(easy_.get(), CURLOPT_READDATA, &nextPiece);
    const curl_read_callback read = [](char* into, std::size_t, std::size_t, void* pieces) {
      return (*static_cast<std::function<std::string()>*>(pieces))().copy(into, CURL_MAX_WRITE_SIZE);
    };
    curl_easy_setopt(easy_.get(), CURLOPT_READFUNCTION, read);
    return perform();
  }

 private:
  void begin(const std::string& method, const std::string& path, const std::string& type) {
    curl_easy_reset(easy_.get());
    curl_easy_setopt(easy_.get(), CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy_.get(), CURLOPT_SSL_VERIFYPEER, 0L);
    curl_easy_setopt(easy_.get(), CURLOPT_SSL_VERIFYHOST, 0L);
    curl_easy_setopt(easy_.get(), CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1);
    curl_easy_setopt(easy_.get(), CURLOPT_CUSTOMREQUEST, method.c_str());
    curl_easy_setopt(easy_.get(), CURLOPT_URL, (origin_ + path).c_str());
    headers_.reset(curl_slist_append(nullptr, "Expect:"));
    curl_slist_append(headers_.get(), (type.empty() ? "Content-Type:" : "Content-Type: " + type).c_str());
    curl_easy_setopt(easy_.get(), CURLOPT_HTTPHEADER, headers_.get());
  }

  std::optional<Answer> perform() {
    Answer answer;
    const curl_write_callback keepBody = [](char* bytes, std::size_t, std::size_t size, void* kept) {
      static_cast<Answer*>(kept)->body.append(bytes, size);
      return size;
    };
    const curl_write_callback keepHeader = [](char* bytes, std::size_t, std::size_t size, void* kept) {
      const std::string line(bytes, size);
      const std::size_t colon = line.find(": ");
      if (colon != std::string::npos)
        static_cast<Answer*>(kept)->headers[base::lowerCase(line.substr(0, colon))] =
            line.substr(colon + 2, size - colon - 4);
      return size;
    };
    curl_easy_setopt(easy_.get(), CURLOPT_WRITEFUNCTION, keepBody);
    curl_easy_setopt(easy_.get(), CURLOPT_WRITEDATA, &answer);
    curl_easy_setopt(easy_.get(), CURLOPT_HEADERFUNCTION, keepHeader);
    curl_easy_setopt(easy_.get(), CURLOPT_HEADERDATA, &answer);
    if (curl_easy_perform(easy_.get()) != CURLE_OK) return std::nullopt;
    long status = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
    answer.status = static_cast<int>(status);
    return answer;
  }

  const std::string origin_;
  base::CHandle<curl_slist, curl_slist_free_all> headers_;
  base::CHandle<CURL, curl_easy_cleanup> easy_;
};

}  // namespace quorvantis::tests
