#pragma once

#include "controls/ControlBase.h"

#include <QObject>
#include <QString>
#include <functional>

// The simple controls of a window. Each fires its events through
// std::function members the window wires to its handlers, and emits
// Changed() so a view can show the new state.
class Control : public QObject, public ControlBase
{
    Q_OBJECT
public:
    Control(Form *owner, const QString &name) : ControlBase(owner, name) {}

Q_SIGNALS:
    void Changed();

protected:
    void NotifyChanged() override { Q_EMIT Changed(); }
};

class Label : public Control
{
    Q_OBJECT
public:
    Label(Form *owner, const QString &name, const QString &caption = QString()) : Control(owner, name), m_caption(caption) {}
    QString Caption() const { return m_caption; }
    void SetCaption(const QString &caption);

private:
    QString m_caption;
};

class Frame : public Label
{
    Q_OBJECT
public:
    using Label::Label;
};

class CommandButton : public Control
{
    Q_OBJECT
public:
    CommandButton(Form *owner, const QString &name, const QString &caption = QString())
        : Control(owner, name), m_caption(caption)
    {
    }
    QString Caption() const { return m_caption; }
    void SetCaption(const QString &caption);

    // Runs the Click handler, as a press of the button does (only when
    // the button is enabled).
    void Press();

    std::function<void()> Click;

private:
    QString m_caption;
};

// A check box: Value 0 (unchecked), 1 (checked) or 2 (grayed). Setting a
// different Value fires Click, as on the original platform.
class CheckBox : public Control
{
    Q_OBJECT
public:
    CheckBox(Form *owner, const QString &name, const QString &caption = QString()) : Control(owner, name), m_caption(caption)
    {
    }
    QString Caption() const { return m_caption; }
    int Value() const { return m_value; }
    void SetValue(int value);

    std::function<void()> Click;

private:
    QString m_caption;
    int m_value = 0;
};

// A text box. Setting Text fires Change. KeyPress may replace or drop
// (set to 0) the key a person typed before it reaches the text.
class TextBox : public Control
{
    Q_OBJECT
public:
    using Control::Control;
    QString Text() const { return m_text; }
    void SetText(const QString &text);
    int MaxLength() const { return m_maxLength; }
    void SetMaxLength(int length) { m_maxLength = length; }

    // A key typed by a person at the end of the text: runs KeyPress, then
    // appends the (possibly changed) key unless it was dropped. Backspace
    // (8) removes the last character. Returns the key that was applied.
    int TypeKey(int keyAscii);

    std::function<void()> Change;
    std::function<void(int &keyAscii)> KeyPress;
    std::function<void()> LostFocus;

private:
    QString m_text;
    int m_maxLength = 0;
};

class ProgressBar : public Control
{
    Q_OBJECT
public:
    using Control::Control;
    int Min() const { return m_min; }
    int Max() const { return m_max; }
    int Value() const { return m_value; }
    void SetMin(int min);
    void SetMax(int max);
    void SetValue(int value); // kept within Min..Max

private:
    int m_min = 0;
    int m_max = 100;
    int m_value = 0;
};
