#pragma once

namespace vantrel::virtualmac {

/// The names of an event's fields. EventKind.h describes them beside the kinds.
enum class Field {
    activates,
    application,
    argument,
    body,
    button,
    chosen,
    code,
    error,
    flags,
    frame,
    granted,
    header,
    ignored,
    information,
    item,
    label,
    level,
    mask,
    message,
    number,
    on,
    opened,
    options,
    pid,
    screen,
    space,
    status,
    style,
    times,
    value,
    window,
};

}  // namespace vantrel::virtualmac
