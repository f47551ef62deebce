#pragma once

namespace vantrel::virtualmac {

/// The names of what an event tells beside its text. What each means stands beside the kinds of events that have it.
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
