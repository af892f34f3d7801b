#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace UsageModel {

/// An immutable text that copies share: one pointer wide, so that a million turns can carry their session and model
/// without a million strings. Copies may be made and dropped on any thread. The empty text owns nothing.
class SharedText {
public:
    SharedText() noexcept = default;
    SharedText(std::string_view text) : shared_(text.empty() ? nullptr : std::make_unique<Shared>(text).release()) {}
    SharedText(const char* text) : SharedText(std::string_view(text)) {}
    SharedText(const std::string& text) : SharedText(std::string_view(text)) {}

    SharedText(const SharedText& other) noexcept : shared_(other.shared_) { retain(); }
    SharedText(SharedText&& other) noexcept : shared_(std::exchange(other.shared_, nullptr)) {}
    SharedText& operator=(SharedText other) noexcept {
        std::swap(shared_, other.shared_);
        return *this;
    }
    ~SharedText() { release(); }

    [[nodiscard]] std::string_view view() const noexcept {
        return shared_ ? std::string_view(shared_->text) : std::string_view();
    }
    [[nodiscard]] bool empty() const noexcept { return !shared_; }
    /// The text followed by a NUL, valid as long as any copy lives.
    [[nodiscard]] const char* c_str() const noexcept { return shared_ ? shared_->text.c_str() : ""; }

    friend bool operator==(const SharedText& a, const SharedText& b) noexcept {
        return a.shared_ == b.shared_ || a.view() == b.view();
    }
    friend auto operator<=>(const SharedText& a, const SharedText& b) noexcept { return a.view() <=> b.view(); }

private:
    struct Shared {
        explicit Shared(std::string_view words) : text(words) {}
        std::string text;
        std::atomic<long> owners{1};
    };

    void retain() const noexcept {
        if (shared_) shared_->owners.fetch_add(1, std::memory_order_relaxed);
    }
    void release() noexcept {
        // The last owner must see every use that other owners made of the text before it frees it.
        if (shared_ && shared_->owners.fetch_sub(1, std::memory_order_acq_rel) == 1) std::unique_ptr<Shared>{shared_};
    }

    Shared* shared_ = nullptr;
};

} // namespace UsageModel
