#pragma once
// The parts of an .xlsx archive, each inflated and parsed as XML as it
// streams, so that no part stands whole in memory. Every part read counts
// against one budget of unpacked bytes.
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "sheet/import/WorkbookLimits.h"

struct zip;

namespace synthara::sheet {

// What a part's parser is told, element names without their namespace;
// a handler that only looks at elements' attributes leaves out the rest.
// A handler stops the parse with Stop(): with a fault, or without one when
// it has read what it wanted.
class XmlHandler {
  public:
    virtual ~XmlHandler() = default;
    virtual void Start(std::string_view name, const char** attributes) = 0;
    virtual void End(std::string_view) {}
    virtual void Text(std::string_view) {}

    void Stop(std::string fault = {});
    bool Stopped() const { return stopped_; }
    const std::string& Fault() const { return fault_; }
    // Called by the parse with the parser it runs.
    void Attach(void* parser) { parser_ = parser; }

  private:
    void* parser_ = nullptr;
    bool stopped_ = false;
    std::string fault_;
};

// The value of the attribute of local name `name` ("id" finds "r:id"), or
// nullptr when the element has none.
const char* Attribute(const char** attributes, std::string_view name);

// "xl/worksheets/sheet1.xml" from a relationship's target, which is either
// absolute ("/xl/...") or relative to the folder of the part `from`.
std::string ResolvePart(std::string_view from, std::string_view target);

class XlsxArchive {
  public:
    // Opens the archive from a file or from bytes in memory (which must
    // outlive it). False with Fault() saying why when it is no archive.
    bool OpenFile(const std::string& path);
    bool OpenBytes(std::string_view bytes);
    ~XlsxArchive();

    bool Has(const std::string& part) const;
    // Streams the part through `handler`. False with `fault` saying why when
    // the part is missing, cannot be inflated, is not well-formed XML, passes
    // the budget, or the handler stopped with a fault.
    bool Parse(const std::string& part, XmlHandler& handler, std::string& fault);

    void SetLimit(std::uint64_t unpackedBytes) { limit_ = unpackedBytes; }
    const std::string& Fault() const { return fault_; }

  private:
    bool Opened(zip* archive, int code, bool encrypted);

    zip* zip_ = nullptr;
    std::uint64_t used_ = 0;
    std::uint64_t limit_ = WorkbookLimits{}.unpackedBytes;
    std::string fault_;
};

}  // namespace synthara::sheet
