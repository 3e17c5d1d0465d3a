// SPDX-License-Identifier: GPL-3.0-or-later
#include "mAni2.h"

#include <QLabel>
#include <QMovie>

namespace mAni2 {

void startAnimation(QLabel* control, int resourceId)
{
    stopAnimation(control);
    // The movie belongs to the label and goes with it.
    auto* movie = new QMovie(QStringLiteral(":/clips/%1.gif").arg(resourceId), QByteArray(), control);
    if (!movie->isValid()) {
        delete movie;
        return;
    }
    control->setMovie(movie);
    movie->start();
}

void stopAnimation(QLabel* control)
{
    QMovie* movie = control->movie();
    if (!movie)
        return;
    movie->stop();
    control->setMovie(nullptr);
    control->clear();
    delete movie;
}

} // namespace mAni2
