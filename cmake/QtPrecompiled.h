#pragma once

#include "Precompiled.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QObject>
#include <QPainter>
#include <QPainterPath>
#include <QString>
