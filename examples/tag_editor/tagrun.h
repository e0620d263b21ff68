// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef TAG_EDITOR_TAGRUN_H
#define TAG_EDITOR_TAGRUN_H

#include <QString>
#include <QStringList>

class ProjectSession;

/// The user's description of a run of tags.
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
    /// Not used for internal tags.
    QString firstAddress;
    /// From one address to the next, in the device's numbers.
    int increment = 1;
    int total = 16;

    QString name(int index) const;
};

/// The tags of a run, as far as they are known.
struct TagRun
{
    QStringList names;
    QStringList addresses;
    /// Why the run cannot be added as a whole; empty if it can.
    QString problem;
};

/// The first `count` tags of the run.
TagRun planRun(ProjectSession &session, const RunSettings &settings, int count);

/// Why the last tag of the run is not possible; empty if it is. Fast for runs of any length.
QString problemAtEnd(ProjectSession &session, const RunSettings &settings);

/// The increment for items of the type that follow each other without gaps from the address on; 1 if unknown.
int naturalIncrement(ProjectSession &session, const RunSettings &settings);

#endif
