// Catches the window that the platform is making for an object, before its first message.
#pragma once

#include "mfc/wnd.h"
#include "win32/queue.h"

struct AfxCreationScope {
    explicit AfxCreationScope(CWnd* object);
    ~AfxCreationScope();
    AfxCreationScope(const AfxCreationScope&) = delete;
    AfxCreationScope& operator=(const AfxCreationScope&) = delete;

    [[nodiscard]] bool attached() const { return object == nullptr; }

    CWnd* object; // null once it has its window
    AfxCreationScope* former;
    HHOOK hook;
    static AfxCreationScope* current;
};
