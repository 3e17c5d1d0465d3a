// SPDX-License-Identifier: GPL-3.0-or-later
// The designed head of the program's dialogs: a blue band with a bold title, a line of text
// under it and a picture at its right.
#pragma once

#include <QWidget>

class QLabel;

class HeaderBand : public QWidget
{
    Q_OBJECT

public:
    // picture: a resource path such as ":/pictures/terminversand.svg"; empty for none.
    HeaderBand(const QString& title, const QString& text, const QString& picture, QWidget* parent = nullptr);

    QLabel* titleLabel() const { return m_title; }
    QLabel* textLabel() const { return m_text; }
    QLabel* pictureLabel() const { return m_picture; }

private:
    QLabel* m_title;
    QLabel* m_text;
    QLabel* m_picture;
};
