#pragma once

#include <string>

namespace KM::Tool {

/// A result on disk. All little-endian: the eight bytes "KMRESULT"; the format as 32-bit number; the length of the text as
/// 32-bit number; the length of the data and a checksum over all but itself, each with 64 bits; the text; the data.
struct CacheFile {
    std::string madeFrom;  ///< what the result is and what went into it, for people; also tells it from all others
    std::string data;
    std::string fault;  ///< why the file is no sound one, for people; the rest counts for nothing then
};

/// Reads and checks all of it. The log tells of the reading as `Caching::ColorForReading` says.
CacheFile ReadCacheFile(const std::string& name);

/// Reads no data, and leaves the checksum unchecked: quick, for lists.
CacheFile ReadCacheHead(const std::string& name);

/// Replaces the file in one step: others find the old one or the new one. The log tells of it as
/// `Caching::ColorForWriting` says.
/// @return  false, with the file as it was, where none can be written; the log tells why
bool WriteCacheFile(const std::string& name, const std::string& madeFrom, const std::string& data);

/// Whether a plain file has the name; not so a link.
bool IsPlainFile(const std::string& name);

/// The path that the operating system knows a name of the cache by.
std::string SystemPath(std::string name);

}  // namespace KM::Tool
