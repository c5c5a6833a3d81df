#pragma once
// Progress of long work; the desktop shows a bar, batch work ignores it.
#include <string>

namespace synthara::ports {

class Progress {
  public:
    virtual ~Progress() = default;
    virtual void Start(const std::string& caption, int total) = 0;
    virtual void Step() = 0;  // one unit done; gives the interface a turn
    virtual void Finish() = 0;
    // Whether the user asked to stop; the work ends at its next step.
    virtual bool Cancelled() const { return false; }
};

class NullProgress final : public Progress {
  public:
    void Start(const std::string&, int) override {}
    void Step() override {}
    void Finish() override {}
};

}  // namespace synthara::ports
