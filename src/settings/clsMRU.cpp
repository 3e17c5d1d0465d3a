// SPDX-License-Identifier: GPL-3.0-or-later
#include "clsMRU.h"

#include "ToolRegistry.h"

namespace {
QString mruKey()
{
    return QString::fromUtf16(ToolRegistry::RootKey) + QStringLiteral("\\MRU");
}
} // namespace

QString clsMRU::Item(int position) const
{
    return position >= 1 && position <= Count() ? m_items.at(position - 1) : QString();
}

bool clsMRU::setMax(int max)
{
    if (max < 1)
        return false;
    m_max = max;
    while (Count() > m_max)
        m_items.removeLast();
    return true;
}

int clsMRU::indexOf(const QString& text) const
{
    for (int i = 0; i < Count(); ++i) {
        if (m_items.at(i).compare(text, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

void clsMRU::Add(const QString& text)
{
    if (indexOf(text) >= 0) {
        SelectItem(text);
        return;
    }
    m_items.prepend(text);
    if (Count() > m_max)
        m_items.removeLast();
}

void clsMRU::ReadSettings()
{
    m_items.clear();
    for (int i = 1; i <= 10; ++i) {
        const QString item = ToolRegistry::GetRegString(mruKey(), QString::number(i));
        if (!item.isEmpty() && indexOf(item) < 0)
            m_items.append(item);
    }
}

void clsMRU::StoreSettings() const
{
    for (int i = 1; i <= Count(); ++i)
        ToolRegistry::SaveRegString(mruKey(), QString::number(i), m_items.at(i - 1));
}

void clsMRU::Remove(int position)
{
    if (position >= 1 && position <= Count())
        m_items.removeAt(position - 1);
}

void clsMRU::SelectItem(int position)
{
    if (Count() < 2 || position < 1 || position > Count())
        return;
    m_items.prepend(m_items.takeAt(position - 1));
}

void clsMRU::SelectItem(const QString& text)
{
    const int index = indexOf(text);
    if (index >= 0)
        SelectItem(index + 1);
}

QList<clsMRU::ComboItem> clsMRU::comboItems() const
{
    QList<ComboItem> list;
    for (const QString& item : m_items) {
        if (item.isEmpty())
            continue;
        // A name with ";" loses what follows; an item without ";" has no tag.
        const QStringList parts = item.split(QLatin1Char(';'));
        list.append({ parts.value(0), parts.value(1) });
    }
    return list;
}
