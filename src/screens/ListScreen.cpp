#include "screens/ListScreen.h"

#include "lists/ListGenres.h"
#include "lists/Sections.h"
#include "look/DOS.h"
#include "look/DOSButton.h"
#include "look/DOSPopup.h"
#include "screens/ScreenHost.h"

#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>

namespace {

QString orderTitle(bool alphabetical) {
    return alphabetical ? QStringLiteral("ORDEM: A–Z") : QStringLiteral("ORDEM: CÓDIGO");
}

} // namespace

ListScreen::ListScreen(ScreenHost& host, int section, State state, const Commands& commands, QObject* parent)
    : QObject(parent), m_host(host), m_section(section), m_state(state) {
    if (section == Section::customers || section == Section::films) {
        auto* tools = new QWidget;
        auto* row = new QHBoxLayout(tools);
        row->setContentsMargins(0, 0, 0, 0);
        row->setSpacing(16);
        if (section == Section::customers) {
            m_create = host.button(QStringLiteral("CADASTRAR"), commands.create);
            m_create->setFixedWidth(130);
            row->addWidget(m_create);
        }
        const bool alphabetical = section == Section::customers ? state.alphabeticalClients : state.alphabeticalFilms;
        m_sort = host.button(orderTitle(alphabetical), std::bind_front(&ListScreen::toggleOrder, this));
        m_sort->setFixedWidth(190);
        row->addWidget(m_sort);
        if (section == Section::films) {
            m_import = host.button(QStringLiteral("IMPORTAR CSV"), commands.importCSV);
            m_import->setFixedWidth(150);
            row->addWidget(m_import);
        }
        row->addStretch(1);
        host.addBody(tools);
    }
    if (section == Section::films)
        addGenreFilter();
    host.addListTable();

    switch (section) {
    case Section::rented:
        if (state.onlyLate) // SELECIONAR stays last: Return on the table presses it
            host.actionRow({{QStringLiteral("AVISOS"), commands.overdueNotices},
                            {QStringLiteral("SELECIONAR"), commands.rentalDetails}});
        else
            host.actionRow({{QStringLiteral("SELECIONAR"), commands.rentalDetails}});
        break;
    case Section::returns:
        // FINALIZAR stays last: Return on the table presses it.
        host.actionRow({{QStringLiteral("DEVOLUÇÃO ESPECIAL"), commands.adjustedReturn},
                        {QStringLiteral("FINALIZAR"), commands.returnRental}});
        break;
    case Section::customers:
        host.actionRow({{QStringLiteral("SELECIONAR"), commands.select}});
        break;
    case Section::films:
        host.actionRow({{QStringLiteral("BAIXAR ARQUIVO CSV"), commands.exportCSV},
                        {QStringLiteral("EDITAR"), commands.edit},
                        {QStringLiteral("APAGAR"), commands.remove},
                        {QStringLiteral("SELECIONAR"), commands.select}});
        break;
    case Section::reports:
        host.actionRow({{QStringLiteral("BAIXAR ARQUIVO CSV"), commands.exportCSV},
                        {QStringLiteral("RELATÓRIO MATRICIAL"), commands.printReport}});
        break;
    default:
        // LANÇAMENTO first for Tab from the table, EXPORTAR CSV last for Return on it.
        host.actionRow({{QStringLiteral("LANÇAMENTO"), commands.cashEntry},
                        {QStringLiteral("FECHAMENTO"), commands.cashClosing},
                        {QStringLiteral("EXPORTAR CSV"), commands.exportCSV}});
    }
}

void ListScreen::addGenreFilter() {
    auto* row = new QWidget;
    auto* items = new QHBoxLayout(row);
    items->setContentsMargins(0, 0, 0, 0);
    items->setSpacing(12);
    items->addWidget(m_host.label(QStringLiteral("GÊNERO")));

    m_genres = new DOSPopup;
    m_genres->setFont(DOS::font(14));
    const QList<GenreChoice> choices = genreChoices(m_host.shop());
    for (const GenreChoice& choice : choices)
        m_genres->addItem(choice.title, choice.genre ? QVariant(*choice.genre) : QVariant());
    std::optional<QString>& selected = m_state.selectedGenre;
    if (selected) {
        const auto found = std::find_if(choices.cbegin(), choices.cend(),
                                        [&selected](const GenreChoice& choice) { return choice.genre == selected; });
        if (found == choices.cend())
            selected.reset(); // the genre left the shop's films
        m_genres->setCurrentIndex(found == choices.cend() ? 0 : int(found - choices.cbegin()));
    }
    connect(m_genres, &QComboBox::currentIndexChanged, this, &ListScreen::changeGenre);
    items->addWidget(m_genres);
    items->addStretch(1);
    m_host.addBody(row);
}

void ListScreen::changeGenre() {
    const QVariant value = m_genres->currentData();
    m_state.selectedGenre = value.isValid() ? std::make_optional(value.toString()) : std::nullopt;
    m_host.reloadList();
}

void ListScreen::toggleOrder() {
    bool& alphabetical = m_section == Section::customers ? m_state.alphabeticalClients : m_state.alphabeticalFilms;
    alphabetical = !alphabetical;
    m_sort->setText(orderTitle(alphabetical));
    m_sort->update();
    m_host.reloadList();
}
