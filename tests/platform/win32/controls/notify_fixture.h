// A control that tells its parent by WM_NOTIFY: what it tells is written down, and answered as the test wants.
#pragma once

#include "control_fixture.h"

#include "win32/commctrl.h"

#include <map>

namespace vndk::test {

class NotifyFixture : public ControlFixture {
protected:
    void SetUp() override {
        ControlFixture::SetUp();
        recorder.onMessage(WM_NOTIFY, [this](HWND window, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
            if (window != owner)
                return std::nullopt;
            return answerTo(*reinterpret_cast<NMHDR*>(lParam));
        });
    }

    /// The notification as one readable line; empty: it isn't written down.
    virtual std::string describe(NMHDR& header) = 0;

    LRESULT answerTo(NMHDR& header) {
        if (std::string line = describe(header); !line.empty())
            notes.push_back(std::move(line));
        if (const auto handler = onNotify.find(header.code); handler != onNotify.end())
            return handler->second(header);
        const auto answer = answers.find(header.code);
        return answer != answers.end() ? answer->second : 0;
    }
    /// The lines since the last call.
    std::vector<std::string> takeNotes() { return std::exchange(notes, {}); }

    using Lines = std::vector<std::string>;
    Lines notes;
    std::map<UINT, LRESULT> answers;
    std::map<UINT, std::function<LRESULT(NMHDR&)>> onNotify;
};

} // namespace vndk::test
