#pragma once

// What the body shows. The main-menu buttons carry one of these as their tag,
// or one of the menu commands below.
namespace Section {
enum : int {
    rental = 0,
    rented = 1,
    returns = 2,
    customers = 3,
    films = 4,
    reports = 5,
    cash = 6,
    help = 7,
    home = 11,
};
} // namespace Section

// Menu tags that run a command instead of opening a section of their own.
namespace MenuCommand {
enum : int {
    suggestion = 8,
    exit = 9,
    newFilm = 10,
};
} // namespace MenuCommand
