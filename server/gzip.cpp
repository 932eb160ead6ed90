#include "server/gzip.h"

#include <zlib.h>

#include <stdexcept>

#include "base/ascii.h"

namespace quorvantis::server {
namespace {

constexpr int kGzipWindow = 15 + 16;  // zlib's largest, with gzip's header and trailer
constexpr int kMemoryLevel = 8;       // zlib's own choice

}  // namespace

bool takesGzip(std::string_view acceptEncoding) {
  while (!acceptEncoding.empty()) {
    std::string coding = base::lowerCase(std::string(acceptEncoding.substr(0, acceptEncoding.find(','))));
    acceptEncoding.remove_prefix(std::min(coding.size() + 1, acceptEncoding.size()));
    std::erase_if(coding, [](char c) { return c == ' ' || c == '\t'; });
    if (coding == "gzip") return true;
    // A weight of 0 refuses it.
    if (coding.starts_with("gzip;q=")) return coding.find_first_of("123456789", 7) != std::string::npos;
  }
  return false;
}

std::string gzipped(std::string_view bytes) {
  z_stream stream{};
  if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, kGzipWindow, kMemoryLevel,
                   Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::runtime_error("zlib does not start");
  }
  std::string compressed(deflateBound(&stream, static_cast<uLong>(bytes.size())), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  stream.next_out = reinterpret_cast<Bytef*>(compressed.data());
  stream.avail_out = static_cast<uInt>(compressed.size());
  const int result = deflate(&stream, Z_FINISH);
  compressed.resize(stream.total_out);
  deflateEnd(&stream);
  if (result != Z_STREAM_END) throw std::runtime_error("zlib does not compress");
  return compressed;
}

}  // namespace quorvantis::server
