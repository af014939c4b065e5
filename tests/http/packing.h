#pragma once

#include <zlib.h>

#include <string>

namespace fleetor {

inline constexpr int gzipFormat = MAX_WBITS + 16;
inline constexpr int zlibFormat = MAX_WBITS;
inline constexpr int rawFormat = -MAX_WBITS;

inline std::string packed(const std::string& bytes, int format) {
  z_stream z{};
  deflateInit2(&z, 9, Z_DEFLATED, format, 9, Z_DEFAULT_STRATEGY);
  std::string out(deflateBound(&z, bytes.size()), '\0');
  z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  z.avail_in = static_cast<uInt>(bytes.size());
  z.next_out = reinterpret_cast<Bytef*>(out.data());
  z.avail_out = static_cast<uInt>(out.size());
  deflate(&z, Z_FINISH);
  out.resize(z.total_out);
  deflateEnd(&z);
  return out;
}

}  // namespace fleetor
