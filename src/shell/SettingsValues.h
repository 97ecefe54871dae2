#pragma once

#include <QString>
#include <QStringList>

namespace talnik {

/// The tabs of the settings, in their order.
enum SettingsTab { GeneralTab, GoogleTab };
QStringList SettingsTabNames();

/// The tab behind `current` or before it, round the ends.
int NextTab(int current, bool forward);

/// "Zobrazit dotaz při uzavření" to "Skrýt při uzavření"; the place of a line is the value of the setting.
QStringList ExitModeTexts();

/// "žádný" to "1 týden předem"; the place of a line is the value of the setting.
QStringList NewAlarmTexts();

/// The whole number at the head of a text; 0 where there is none. What no setting can hold becomes the largest it can.
int LenientNumber(const QString& text);

/// The number of a field moved by a key, not below 0.
QString MovedNumber(const QString& text, int by);

}  // namespace talnik
