// Frame, label, button and picture: what shows and is at most clicked.
#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>

#include "platform/controls.h"
#include "platform/qt/controlbody.h"
#include "platform/qt/core.h"

namespace orvenmod::platform::qt {

/// A group box with its caption on the line around it, so that controls may lie close under the caption. Without a
/// caption it shows nothing of itself.
class FrameWidget : public QGroupBox {
    Q_OBJECT
public:
    using QGroupBox::QGroupBox;

protected:
    void paintEvent(QPaintEvent*) override;
};

/// A push button that Enter presses too.
class ButtonWidget : public QPushButton {
    Q_OBJECT
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// Shows a picture as large as it fits, in proportion.
class PictureWidget : public QFrame {
    Q_OBJECT
public:
    explicit PictureWidget(QWidget* parent);
    void setPixmap(const QPixmap& picture);
    const QPixmap& pixmap() const { return picture_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap picture_;
};

class QtFrame final : public QtControl<Frame> {
public:
    QtFrame(const ControlDesign& design, QWidget* parent);
    std::string caption() const override;
    void setCaption(const std::string& caption) override;

private:
    FrameWidget* frame_;
};

class QtLabel final : public QtControl<Label> {
public:
    QtLabel(const ControlDesign& design, QWidget* parent);
    std::string caption() const override;
    void setCaption(const std::string& caption) override;

private:
    QLabel* label_;
};

class QtButton final : public QtControl<Button> {
public:
    QtButton(Core& core, const ControlDesign& design, QWidget* parent);
    std::string caption() const override;
    void setCaption(const std::string& caption) override;

private:
    ButtonWidget* button_;
};

class QtPicture final : public QtControl<Picture> {
public:
    QtPicture(const ControlDesign& design, QWidget* parent);
    bool show(const std::string& path) override;
    void clear() override;
    bool empty() const override;

private:
    PictureWidget* picture_;
};

}  // namespace orvenmod::platform::qt
