#pragma once
// The file dialogs.
#include "ports/FileChooser.h"

class QWidget;

namespace synthara::ui {

class QtFileChooser final : public ports::FileChooser {
  public:
    explicit QtFileChooser(QWidget* parent = nullptr) : parent_(parent) {}
    void SetParent(QWidget* parent) { parent_ = parent; }

    std::string ChooseOpen(const std::string& title, const ports::FileFilter& filter,
                           const std::string& startFolder) override;
    std::string ChooseSave(const std::string& title, const ports::FileFilter& filter,
                           const std::string& suggestedName) override;

  private:
    QWidget* parent_;
};

}  // namespace synthara::ui
