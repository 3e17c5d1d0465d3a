// SPDX-License-Identifier: GPL-3.0-or-later
// The list of the last recipients: "name;key-number" items, the newest first, no two alike in
// any case, kept in the store under the MRU key as values "1", "2", ...
#pragma once

#include <QString>
#include <QStringList>

class clsMRU
{
public:
    int Count() const { return int(m_items.size()); }
    // The item at a 1-based position; an unknown position gives an empty text.
    QString Item(int position) const;
    int Max() const { return m_max; }
    // A limit below 1 is refused (false) and changes nothing; otherwise the tail beyond it goes.
    bool setMax(int max);
    // Puts text in front; an item that exists already (in any case) moves to the front instead.
    void Add(const QString& text);
    void Clear() { m_items.clear(); }
    // Replaces the list by the values "1" to "10" of the store, skipping empty ones and doubles.
    void ReadSettings();
    // Writes item i to value i; higher values stay as they are.
    void StoreSettings() const;
    void Remove(int position);
    // Moves the item (by position or text) to the front, keeping its stored spelling.
    void SelectItem(int position);
    void SelectItem(const QString& text);

    // What FillListCombo shows: for each item, the name and the tag ("key-number").
    struct ComboItem
    {
        QString name;
        QString tag;
    };
    QList<ComboItem> comboItems() const;

    const QStringList& items() const { return m_items; }

private:
    int indexOf(const QString& text) const;

    QStringList m_items;
    int m_max = 4;
};
