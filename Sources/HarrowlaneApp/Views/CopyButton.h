#pragma once

#include <QStringList>
#include <QTimer>

#include "HarrowlaneApp/Drawing/Glyphs.h"
#include "HarrowlaneApp/Views/HUDButton.h"

namespace HarrowlaneApp {

/// Shows a command and puts it on the clipboard. For two seconds it then says that it did, at the same size: nothing
/// moves under the pointer.
class CopyButton : public HUDButton {
    Q_OBJECT

public:
    explicit CopyButton(const ApplicationLook& look, QWidget* parent = nullptr);

    void setCommand(const QString& command);
    [[nodiscard]] const QString& command() const { return command_; }
    [[nodiscard]] bool isCopied() const { return fallBack_.isActive(); }

    /// The width at which the command takes one line.
    [[nodiscard]] int naturalWidth() const;
    /// Where that is wider than the room, the command is broken into lines.
    void setRoom(int width);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintFace(QPainter& painter) override;
    [[nodiscard]] FocusRing::Outline outline() const override;

private:
    void copy();
    void tell();
    [[nodiscard]] QStringList lines() const;
    void paintText(QPainter& painter) const;

    QString command_;
    int room_ = 0;
    QTimer fallBack_;
};

} // namespace HarrowlaneApp
