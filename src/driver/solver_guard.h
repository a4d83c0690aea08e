#pragma once
// solver_guard.h - the process between Zarel and the solver's shell, so that nothing of the solver
// outlives Zarel.

#include <csignal>
#include <span>
#include <string_view>

namespace zarel {

// Note [guard of the solver]
// A shell that is killed leaves its solver running, and that one its own children: they would go on
// writing ".output" while the next run reads it. They must not be put into a process group of their
// own, for then the keys of a terminal would not reach them. So Zarel runs itself once more, and
// that second process starts the shell. It dies of nothing that Zarel dies of; the system tells it
// of Zarel's end, and hands all orphans among its descendants to it. To end them it signals its
// children until none is left.

// The name (argument 0) by which Zarel runs itself as the guard. The arguments are then the process
// to guard for, the descriptor to report to, and the shell's command.
inline constexpr std::string_view kGuardName = "solver-guard";
bool is_guard(std::span<char* const> arguments);

// What the guard is told: to ask the solver to end, and to kill it.
inline constexpr int kAskToEnd = SIGUSR1;
inline constexpr int kKill = SIGUSR2;

// What the guard reports when the shell has ended: its status as waitpid() gives it, or this when
// it could not be started. Nothing, when there was no one left to run it for.
inline constexpr int kNoShell = -1;

// Runs the command and ends the process.
[[noreturn]] void guard_solver(std::span<char* const> arguments);

}    // namespace zarel
