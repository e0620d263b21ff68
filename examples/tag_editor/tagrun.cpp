// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#include "tagrun.h"

#include "projectsession.h"
#include "tagtypes.h"

#include <zelmar_label/label_table/labelinterface.h>
#include <zelmar_label/label_table/labeltype.h>
#include <zelmar_label/tag_store/tagsystem.h>

#include <QCoreApplication>

#include <climits>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(TagRun)
};

/// The first item of a run on its device.
struct FirstItem
{
    FirstItem(ProjectSession &session, const RunSettings &settings)
        : address(settings.firstAddress)
        , label(session.judge().link(settings.link).label)
    {
        command.address = address.device;
        command.dataType = static_cast<CommunicatorCommand::DataType>(
            session.tags().getCommunicatorCommandDataType(settings.dataType));
        command.length = settings.dataType == tagtype::Ascii ? settings.scale : 1;
        row = label->addressValidation(address.device, command.dataType);
    }

    /// Runs of bits copy the front of their addresses from the text, so they must not contain stations.
    QStringList addresses(int count, int increment) const
    {
        QStringList made;
        const auto commands = label->makeContinueCommandwithCap(row, command, count, increment, true);
        for (const CommunicatorCommand &next : commands)
            made.append(address.at(next.address));
        return made;
    }

    StationAddress address;
    label::LabelInterface *label;
    CommunicatorCommand command;
    int row = -1;
};

QString verdictOf(ProjectSession &session, const RunSettings &settings)
{
    if (settings.firstAddress.isEmpty() && session.judge().link(settings.link).label)
        return Texts::tr("Type the first address.");
    const AddressVerdict verdict =
        session.judge().judge(settings.link, settings.dataType, settings.firstAddress, settings.scale);
    return verdict.isAccepted() ? QString() : Texts::tr("The first address is not valid: %1.").arg(verdict.reason);
}

} // namespace

QString RunSettings::name(int index) const
{
    return prefix + QString::number(start + index).rightJustified(digits, QLatin1Char('0')) + suffix;
}

TagRun planRun(ProjectSession &session, const RunSettings &settings, int count)
{
    TagRun run;
    for (int index = 0; index < count; ++index) {
        run.names.append(settings.name(index));
        if (run.problem.isEmpty())
            run.problem = session.nameProblem(run.names.constLast());
    }
    const QString verdict = verdictOf(session, settings);
    if (!verdict.isEmpty()) {
        run.problem = verdict;
        return run;
    }
    if (settings.link == 0) {
        for (int index = 0; index < count; ++index)
            run.addresses.append(QStringLiteral(""));
        return run;
    }
    run.addresses = FirstItem(session, settings).addresses(count, settings.increment);
    if (run.addresses.size() < count)
        run.problem = Texts::tr("Only %1 of the first %2 addresses exist on the device, from %3 to %4.")
                          .arg(QString::number(run.addresses.size()), QString::number(count), run.addresses.value(0),
                               run.addresses.value(run.addresses.size() - 1));
    return run;
}

QString problemAtEnd(ProjectSession &session, const RunSettings &settings)
{
    if (settings.total > 1 && !session.tags().isNewTag(settings.name(settings.total - 1)))
        return session.nameProblem(settings.name(settings.total - 1));
    if (settings.link == 0 || !verdictOf(session, settings).isEmpty())
        return QString();
    const FirstItem first(session, settings);
    const qint64 distance = qint64(settings.increment) * (settings.total - 1);
    const bool isThere = settings.total < 2 || (distance <= INT_MAX && first.addresses(2, int(distance)).size() == 2);
    return isThere ? QString()
                   : Texts::tr("The last of the %1 addresses is beyond the device's limits.").arg(settings.total);
}

int naturalIncrement(ProjectSession &session, const RunSettings &settings)
{
    if (settings.link == 0 || !verdictOf(session, settings).isEmpty())
        return 1;
    FirstItem first(session, settings);
    const int unit = qMax(1, first.label->datasize(first.row));
    if (settings.dataType == tagtype::Ascii)
        return (settings.scale + unit - 1) / unit;
    const auto pair = first.label->makeContinueCommand(first.row, first.command, 2);
    if (pair.size() < 2 || first.command.dataType == CommunicatorCommand::Bit)
        return 1;
    const int distance = first.label->addressRange(first.row, StationAddress(pair.at(1).address).device) -
                         first.label->addressRange(first.row, first.address.device);
    // If the numbers count bits, increments count units.
    return qMax(1, first.label->isTypeNeedAlignmentByte(first.row) ? distance / (unit * 8) : distance);
}
