// SPDX-FileCopyrightText: the zelmar_label authors
// SPDX-License-Identifier: MIT

#ifndef ZELMAR_LABEL_TESTS_FORWARDINGLABEL_H
#define ZELMAR_LABEL_TESTS_FORWARDINGLABEL_H

#include "tools/project-files/labelforwarder.h"

/// A label of a class that the library does not know. It forwards all calls to another label.
class ForwardingLabel final : public LabelForwarder
{
public:
    using LabelForwarder::LabelForwarder;

    /// Number of calls that may add a row.
    int validations = 0;

    int addressValidation(const QString &address, int type) override
    {
        ++validations;
        return LabelForwarder::addressValidation(address, type);
    }
    CommunicatorCommand convertBitCommandToRegisterCommand(const CommunicatorCommand &command, int &row) override
    {
        ++validations;
        return LabelForwarder::convertBitCommandToRegisterCommand(command, row);
    }
};

#endif
