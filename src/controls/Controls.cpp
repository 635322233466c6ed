#include "controls/Controls.h"

#include <algorithm>

void Label::SetCaption(const QString &caption)
{
    if (m_caption == caption)
        return;
    m_caption = caption;
    NotifyChanged();
}

void CommandButton::SetCaption(const QString &caption)
{
    if (m_caption == caption)
        return;
    m_caption = caption;
    NotifyChanged();
}

void CommandButton::Press()
{
    if (Enabled())
        Fire(Click);
}

void CheckBox::SetValue(int value)
{
    if (m_value == value)
        return;
    m_value = value;
    NotifyChanged();
    Fire(Click);
}

void TextBox::SetText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    NotifyChanged();
    Fire(Change);
}

int TextBox::TypeKey(int keyAscii)
{
    if (KeyPress)
        Fire([&] { KeyPress(keyAscii); });
    if (keyAscii == 0)
        return 0;
    if (keyAscii == 8) {
        SetText(m_text.left(std::max<qsizetype>(0, m_text.size() - 1)));
        return keyAscii;
    }
    if (m_maxLength > 0 && m_text.size() >= m_maxLength)
        return 0;
    SetText(m_text + QChar(keyAscii));
    return keyAscii;
}

void ProgressBar::SetMin(int min)
{
    m_min = min;
    m_value = std::clamp(m_value, m_min, std::max(m_min, m_max));
    NotifyChanged();
}

void ProgressBar::SetMax(int max)
{
    m_max = max;
    m_value = std::clamp(m_value, m_min, std::max(m_min, m_max));
    NotifyChanged();
}

void ProgressBar::SetValue(int value)
{
    const int clamped = std::clamp(value, m_min, std::max(m_min, m_max));
    if (m_value == clamped)
        return;
    m_value = clamped;
    NotifyChanged();
}
