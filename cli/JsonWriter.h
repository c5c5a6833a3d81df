#pragma once
// JSON written as it goes: a million rows reach the stream without a document
// of them in memory. The bytes are those nlohmann's compact dump prints (with
// invalid UTF-8 replaced), so that output stays as earlier versions wrote it;
// keeping members in the byte order of their keys, as that dump does, is the
// caller's part.
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace synthara::cli {

class JsonWriter {
  public:
    explicit JsonWriter(std::ostream& out);
    // Hands on whatever is still held back.
    ~JsonWriter();
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    void BeginObject();
    // Closing the outermost object or array ends the document with a line
    // break and hands it to the stream.
    void EndObject();
    void BeginArray();
    void EndArray();

    // The name of the next member of the open object.
    JsonWriter& Key(std::string_view key);

    // Quoted, with quotes, backslashes and control characters escaped; other
    // characters pass as they are, bytes that are not UTF-8 become U+FFFD.
    void String(std::string_view text);
    // The shortest text that reads back to the same double ("0.1", "4.0",
    // "1e-300", "-0.0"); null for NaN and the infinities.
    void Number(double value);
    // null when absent.
    void Number(const std::optional<double>& value);
    void Integer(std::int64_t value);
    void Bool(bool value);
    void Null();

    // Gives the stream what has been written so far.
    void Flush();

  private:
    // The comma before a value or key, unless it is the first of its
    // container or follows its key.
    void Separate();
    void Open(char bracket);
    void Close(char bracket);
    void Quoted(std::string_view text);

    std::ostream& out_;
    std::string buffer_;
    // Per open container, outermost first: whether it is still empty.
    std::vector<bool> empty_;
    bool afterKey_ = false;
};

}  // namespace synthara::cli
