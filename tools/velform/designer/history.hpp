// Undo and redo for the designer: whole form snapshots, the newest last,
// and the step that was saved, so that quitting knows what would be lost.
#pragma once

#include "form.hpp"

#include <cstddef>
#include <vector>

namespace velform::designer {

class History {
public:
    static constexpr std::size_t kSteps = 200;

    explicit History(Form first) : states_{std::move(first)} {}

    const Form &current() const { return states_[at_]; }
    // A new state after the current one; the redo steps are dropped.
    void push(Form next)
    {
        if (saved_ != kNeverSaved && saved_ > at_) saved_ = kNeverSaved;
        states_.resize(at_ + 1);
        states_.push_back(std::move(next));
        if (states_.size() > kSteps + 1) {
            states_.erase(states_.begin());
            saved_ = saved_ == 0 ? kNeverSaved : saved_ - 1;
        }
        at_ = states_.size() - 1;
    }
    bool undo()
    {
        if (at_ == 0) return false;
        --at_;
        return true;
    }
    bool redo()
    {
        if (at_ + 1 == states_.size()) return false;
        ++at_;
        return true;
    }
    void mark_saved() { saved_ = at_; }
    bool modified() const { return saved_ != at_; }

private:
    static constexpr std::size_t kNeverSaved = static_cast<std::size_t>(-1);
    std::vector<Form> states_;
    std::size_t at_ = 0;
    std::size_t saved_ = 0;
};

} // namespace velform::designer
