#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "HarrowlaneApp/Copy/Pace.h"
#include "HarrowlaneApp/Copy/Readiness.h"
#include "HarrowlaneApp/Copy/WeekCopy.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/UsageSnapshot.h"

/// What the popover shows, and what it says.
namespace HarrowlaneApp::NowTexts {

inline constexpr std::string_view warmingUpText = "Reading your usage history…";
inline constexpr std::string_view sampleButton = "See a sample week";
inline constexpr std::string_view sampleMark = "SAMPLE";
inline constexpr std::string_view exitButton = "Exit";
inline constexpr std::string_view weekCardTitle = "THIS WEEK";
inline constexpr std::string_view weekCardHelp = "Open the full week view";
inline constexpr std::string_view refreshHelp = "Refresh now";
inline constexpr std::string_view dashboardHelp = "Dashboard";
inline constexpr std::string_view settingsHelp = "Settings";
inline constexpr std::string_view quitHelp = "Quit";
inline constexpr std::string_view copiedText = "Copied";
inline constexpr double copiedSeconds = 2.0;
inline constexpr std::string_view resetsWord = "resets";
inline constexpr std::string_view leftWord = "left";

/// When a window begins anew.
struct Reset {
    std::optional<UsageModel::Date> at;
    /// The reset of a week is told by its day, that of a session by its minute.
    bool isWeekly = false;
};

/// "Mon 5 PM", "4:15 PM"; "—" where no reset is known.
[[nodiscard]] std::string clockString(const Reset& reset, const UsageModel::Calendar& calendar);
/// "3d 0h", "2h 05m", "59m"; "—" where no reset is known. Whole seconds count, and none of them below zero.
[[nodiscard]] std::string timeLeft(std::optional<UsageModel::Date> resetsAt, UsageModel::Date now);

/// What stands between header and footer.
enum class Body { cards, warmingUp, firstRun };

/// What of the program's state the popover goes by.
struct State {
    Readiness readiness = Readiness::warmingUp;
    bool isShowingSample = false;
    HelperState helper = HelperState::notInstalled;
};

[[nodiscard]] Body body(const State& state);

/// What stands at the right of the header.
enum class HeaderChip { none, sample, estimated, connectGauge };

[[nodiscard]] HeaderChip headerChip(const State& state, const UsageModel::UsageSnapshot& snapshot);
[[nodiscard]] std::string_view text(HeaderChip chip);

/// The cards, by their kind.
enum class Card { session, weekChart, weekWindow, recommendation };

/// The cards that the snapshot fills, from the top.
[[nodiscard]] std::vector<Card> cards(const UsageModel::UsageSnapshot& snapshot);
/// The first meter of that kind; null when there is none. Points into the snapshot.
[[nodiscard]] const UsageModel::WindowState* meter(const UsageModel::UsageSnapshot& snapshot,
                                                   UsageModel::WindowKind kind);

/// The words of a window's card.
struct WindowCard {
    std::string_view title;
    Pace::Shares shares;
    Pace::Status status;
    std::string clock;
    std::string timeLeft;
};

struct WindowCardQuestion {
    const UsageModel::WindowState& meter;
    bool isWeekly = false;
    UsageModel::Date now;
};

[[nodiscard]] WindowCard windowCard(const WindowCardQuestion& question, const UsageModel::Calendar& calendar);

/// The week's card in words, for those who do not see it.
[[nodiscard]] std::string accessibleWeek(const WeekCopy::Compact& week);

enum class AdviceIcon { arrowUp, lightbulb };

[[nodiscard]] AdviceIcon adviceIcon(UsageModel::Recommendation::Kind kind);
/// What the button that copies a command is called: "Copy /model sonnet".
[[nodiscard]] std::string copyName(std::string_view command);

struct FirstRunCard {
    std::string_view title;
    std::string_view text;

    friend bool operator==(const FirstRunCard&, const FirstRunCard&) = default;
};

[[nodiscard]] FirstRunCard firstRunCard(Readiness readiness);

/// The line at the left of the footer.
struct Footer {
    std::string text;
    bool isError = false;

    friend bool operator==(const Footer&, const Footer&) = default;
};

struct FooterQuestion {
    std::optional<std::string> lastError;
    UsageModel::Date generatedAt;
};

[[nodiscard]] Footer footer(const FooterQuestion& question, const UsageModel::Calendar& calendar);

} // namespace HarrowlaneApp::NowTexts
