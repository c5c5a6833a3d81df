#pragma once
// The combined results of "View Analysis": one line per summary the analysis
// shows (each model, per group and overall) with its estimate, confidence
// limits, test and heterogeneity, and the notes under the summary.
#include <QDialog>

#include "analysis/Result.h"

class QTableWidget;

namespace synthara::ui {

class AnalysisResultsDialog final : public QDialog {
    Q_OBJECT
  public:
    enum Column { Group, Model, K, Estimate, Lower, Upper, Z, P, Q, Df, I2, Tau2, ColumnCount };

    AnalysisResultsDialog(const analysis::AnalysisResult& result, QWidget* parent = nullptr);

    QTableWidget& Summaries() { return *summaries_; }

  private:
    QTableWidget* summaries_;
};

}  // namespace synthara::ui
