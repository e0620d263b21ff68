// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_TAGRUN_H
#define TAG_EDITOR_TAGRUN_H

#include <QString>
#include <QStringList>

class ProjectSession;

/// A run of tags as a user describes it.
struct RunSettings
{
    int link = 0;
    int dataType = 0;
    /// Length of each text.
    int scale = 1;
    QString prefix;
    QString suffix;
    /// Leading zeros fill the numbers up to this many digits.
    int digits = 2;
    int start = 1;
    /// Without meaning for internal tags.
    QString firstAddress;
    /// From one address to the next, in the device's numbers.
    int increment = 1;
    int total = 16;

    QString name(int index) const;
};

/// The tags that a run would be, as far as they can be told.
struct TagRun
{
    QStringList names;
    QStringList addresses;
    /// Why the run cannot be added as a whole; empty when it can.
    QString problem;
};

/// The first `count` tags of the run.
TagRun planRun(ProjectSession &session, const RunSettings &settings, int count);

/// Why the run's far end cannot be; empty when it can. Cheap, however long the run is.
QString problemAtEnd(ProjectSession &session, const RunSettings &settings);

/// The increment at which items of the type lie side by side from the address on; 1 where none can be told.
int naturalIncrement(ProjectSession &session, const RunSettings &settings);

#endif
