#pragma once
// The system clipboard, as text: what a copy puts there and a paste reads
// back (rows by line feeds, cells by tabs, as spreadsheets exchange them).
#include <string>

namespace synthara::ports {

class Clipboard {
  public:
    virtual ~Clipboard() = default;
    virtual std::string Text() const = 0;
    virtual void SetText(const std::string& text) = 0;
};

// A clipboard of this process alone; for batch work and tests.
class MemoryClipboard final : public Clipboard {
  public:
    std::string Text() const override { return text_; }
    void SetText(const std::string& text) override { text_ = text; }

  private:
    std::string text_;
};

}  // namespace synthara::ports
