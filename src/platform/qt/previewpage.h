// The sheet of paper in the print preview: shows one page, laid out when it is first painted.
#pragma once

#include <QWidget>
#include <string>

#include "platform/report/reportpages.h"

namespace orvenmod::platform::qt {

class PreviewPage final : public QWidget {
    Q_OBJECT
public:
    PreviewPage(std::string family, QWidget* parent);

    void showPage(report::Page page, const report::Paper& paper);
    /// 1 is the paper's own size at 96 dots an inch.
    void setZoom(double zoom);
    const report::Paper& paper() const { return paper_; }
    /// The paper in pixels at a zoom of 1.
    QSizeF plainSize() const;
    /// The pixels around the paper, on each side.
    static constexpr int kDesk = 12;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void resizeToPaper();

    std::string family_;
    report::Page page_;
    report::Paper paper_;
    double zoom_ = 1;
};

}  // namespace orvenmod::platform::qt
