#pragma once

// Where the declaration generator reports its progress; the donor window
// adapts its progress bar to it, a command-line caller may ignore it.
class ProgressSink
{
public:
    virtual ~ProgressSink() = default;
    virtual void SetMax(int max) = 0;
    virtual void SetValue(int value) = 0;
};

// Progress nobody watches.
class NoProgress final : public ProgressSink
{
public:
    void SetMax(int) override {}
    void SetValue(int) override {}
};
