// Classes that the sibling library shares with the probe.
#pragma once

struct Shape {
    virtual ~Shape();
};

struct Round : Shape {
    ~Round() override;
};

/// The caller owns it.
Shape* makeRound();
