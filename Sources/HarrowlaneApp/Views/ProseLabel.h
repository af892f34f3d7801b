#pragma once

#include <vector>

#include <QString>

#include "HarrowlaneApp/Views/HUDWidget.h"

namespace HarrowlaneApp {

/// A paragraph in which code words, which its text has between backticks, stand out.
class ProseLabel : public HUDWidget {
    Q_OBJECT

public:
    ProseLabel(const ApplicationLook& look, const QString& text, QWidget* parent = nullptr);

    /// Without the backticks, as it is read.
    [[nodiscard]] QString text() const { return accessibleName(); }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// A part of a word that is code, or is not.
    struct Run {
        QString text;
        bool isCode = false;
    };
    using Word = std::vector<Run>;

    /// A part in its place, from the left and in lines from the top.
    struct Placed {
        Run run;
        double left = 0.0;
        int line = 0;
    };

    [[nodiscard]] static std::vector<Word> wordsOf(const QString& text);
    [[nodiscard]] static double widthOf(const Word& word);
    [[nodiscard]] std::vector<Placed> layOut(double width) const;

    std::vector<Word> words_;
};

} // namespace HarrowlaneApp
