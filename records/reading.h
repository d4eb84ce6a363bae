#pragma once

#include <optional>
#include <utility>
#include <vector>

/// What a reader found: something, nothing, or that the table could not be read (the connection's fault handler was told
/// why). "Could not be read" is never "nothing": what is taken for missing gets written over.
template<typename T>
class Reading
{
public:
    /// The table could not be read.
    static Reading failure() { return Reading(State::Failed); }
    /// The table was read, and what was asked for is not there.
    static Reading nothing() { return Reading(State::None); }
    Reading(T value) // NOLINT(google-explicit-constructor): a reader returns what it found
        : m_state(State::Found)
        , m_value(std::move(value))
    {
    }

    [[nodiscard]] bool failed() const { return m_state == State::Failed; }
    [[nodiscard]] bool none() const { return m_state == State::None; }
    [[nodiscard]] bool found() const { return m_state == State::Found; }

    /// What was found; a default value when nothing was. Not for a reading that failed: ask `failed()` first.
    [[nodiscard]] const T &operator*() const { return m_value; }
    [[nodiscard]] const T *operator->() const { return &m_value; }
    /// For who cannot go on without an answer: what was found, a default value when nothing was; none after a failure.
    [[nodiscard]] std::optional<T> ifRead() const { return failed() ? std::nullopt : std::optional<T>(m_value); }
    [[nodiscard]] T valueOr(T other) const { return found() ? m_value : std::move(other); }

private:
    enum class State { Found, None, Failed };
    explicit Reading(State state)
        : m_state(state)
    {
    }

    State m_state;
    T m_value{};
};

/// The rows that a reader found. A table without such a row is `found()` and empty, or failed; never `none()`.
template<typename T>
using RowsRead = Reading<std::vector<T>>;
