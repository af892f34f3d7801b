#pragma once

#include <utility>

#include "HarrowlaneApp/Alerts/NotificationService.h"

namespace HarrowlaneApp {

/// Keeps what it was asked, and answers when it is told to.
class FakeNotificationService : public NotificationService {
public:
    void requestAuthorization(std::function<void(const PermissionAnswer&)> answer) override {
        permissionQuestions.push_back(std::move(answer));
    }
    void authorizationStatus(std::function<void(AuthorizationStatus)> answer) override {
        statusQuestions.push_back(std::move(answer));
    }
    void post(const Banner& banner, std::function<void(const std::optional<std::string>&)> answer) override {
        if (onPost) onPost();
        posted.push_back(banner);
        if (answer) answer(std::nullopt);
    }
    void delivered(std::function<void(const std::vector<std::string>&)> answer) override { answer({}); }

    /// Answers all that wait.
    void answerPermission(const PermissionAnswer& given) {
        for (const auto& answer : std::exchange(permissionQuestions, {})) answer(given);
    }
    void answerStatus(AuthorizationStatus given) {
        for (const auto& answer : std::exchange(statusQuestions, {})) answer(given);
    }

    std::vector<std::function<void(const PermissionAnswer&)>> permissionQuestions;
    std::vector<std::function<void(AuthorizationStatus)>> statusQuestions;
    std::vector<Banner> posted;
    /// Called before a banner counts as posted.
    std::function<void()> onPost;
};

} // namespace HarrowlaneApp
