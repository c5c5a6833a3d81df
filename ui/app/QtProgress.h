#pragma once
// A progress dialog with Cancel for long work.
#include <memory>

#include "ports/Progress.h"

class QProgressDialog;
class QWidget;

namespace synthara::ui {

class QtProgress final : public ports::Progress {
  public:
    explicit QtProgress(QWidget* parent = nullptr);
    ~QtProgress() override;

    void Start(const std::string& caption, int total) override;
    void Step() override;
    void Finish() override;
    bool Cancelled() const override;

  private:
    QWidget* parent_;
    std::unique_ptr<QProgressDialog> dialog_;
};

}  // namespace synthara::ui
