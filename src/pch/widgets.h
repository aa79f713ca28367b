#pragma once

#include "core.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QHeaderView>
#include <QMainWindow>
#include <QTableView>
#include <QTimer>
#include <QVariant>
