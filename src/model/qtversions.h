#pragma once

#include <QCoreApplication>
#include <QPointF>

#if QT_VERSION_MAJOR < 6
#include <QTextCodec>
#endif

// What Qt 5 and Qt 6 have in different words; everything else is written so that both take it.

/// Where in its widget a mouse or drop event happened.
template <typename Event>
QPointF placeOf(const Event &event)
{
    if constexpr (requires { event.position(); })
        return event.position();
    else if constexpr (requires { event.localPos(); })
        return event.localPos();
    else
        return event.posF();
}

/// Where on the screen a mouse event happened.
template <typename Event>
QPoint screenPlaceOf(const Event &event)
{
    if constexpr (requires { event.globalPosition(); })
        return event.globalPosition().toPoint();
    else
        return event.globalPos();
}

/// The desktop's scale is followed, as Qt 6 does unasked. Before the application is made.
inline void followDesktopScale()
{
#if QT_VERSION_MAJOR < 6
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
}

/// Arguments and file names are UTF-8 in every locale, as Qt 6 takes them unasked. Before the application is made.
inline void readArgumentsAsUtf8()
{
#if QT_VERSION_MAJOR < 6
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
#endif
}
