#include "shell/application_state.h"

#include <QEvent>
#include <QPointer>
#include <QStringListModel>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "core/gas_database.h"
#include "core/gas_listing.h"
#include "core/idiomas.h"
#include "shell/texto_gases.h"

namespace {
QString to_qstring(const std::filesystem::path& path) {
    return QString::fromStdString(path.string());
}

constexpr int PROBLEM_SHOWN = 15'000;  // ms

/// Names of the gases; what is wrong with one is its tool tip.
class GasNames : public QStringListModel {
public:
    std::function<QString(std::int16_t gas)> problem;

    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::ToolTipRole)
            return QStringListModel::data(index, role);
        const QString text = index.isValid() ? problem(static_cast<std::int16_t>(index.row() + 1)) : QString();
        return text.isEmpty() ? QVariant() : text;
    }
};

}  // namespace

struct ApplicationState::Impl {
    explicit Impl(std::filesystem::path program_folder)
        : folder(std::move(program_folder)), table(folder / "idioma.lng"), database(folder / "data") {}

    std::filesystem::path folder;
    tavo::confreg::Watched table;
    tavo::confreg::Watched database;
    QStringList languages;
    QString language;
    std::int16_t gas_count = 0;
    GasNames gas_names;
    std::vector<tavo::Global::GasProblem> gas_problems;
    AmountUnit unit = AmountUnit::Moles;
    tavo::SlotTable slot_table;
    std::map<QString, Factory> factories;
    std::map<QString, QPointer<QWidget>> windows;
};

ApplicationState::ApplicationState(std::filesystem::path program_folder, QObject* parent)
    : QObject(parent), impl_(std::make_unique<Impl>(std::move(program_folder))) {
    impl_->gas_names.problem = [this](std::int16_t gas) { return gas_problem(gas); };
}

ApplicationState::~ApplicationState() {
    // Windows that were made but never shown belong to nobody else, and may ask the state while they go.
    const auto windows = std::exchange(impl_->windows, {});
    for (const auto& [name, window] : windows) {
        if (window && !window->parent())
            delete window.data();
    }
}

const std::filesystem::path& ApplicationState::program_folder() const {
    return impl_->folder;
}

std::filesystem::path ApplicationState::data_path() const {
    return impl_->database.path();
}

std::filesystem::path ApplicationState::language_path() const {
    return impl_->table.path();
}

QString ApplicationState::help_path() const {
    for (const QString& name : impl_->languages) {
        if (tavo::idiomas::same_language(name.toStdString(), impl_->language.toStdString()))
            return to_qstring(impl_->folder / (name + QStringLiteral(".chm")).toStdString());
    }
    return {};
}

tavo::confreg::Site ApplicationState::site() const {
    return {impl_->folder};
}

void ApplicationState::load_languages() {
    const tavo::confreg::Text& table = impl_->table.text();
    impl_->languages.clear();
    for (const std::string& name : tavo::idiomas::languages(table))
        impl_->languages.append(QString::fromStdString(name));
    impl_->language = QString::fromStdString(tavo::idiomas::active(table));
}

QStringList ApplicationState::languages() const {
    return impl_->languages;
}

QString ApplicationState::language() const {
    return impl_->language;
}

QString ApplicationState::texto(int number) const {
    return QString::fromStdString(tavo::idiomas::text(impl_->table.text(), impl_->language.toStdString(), number));
}

QString ApplicationState::texto(int number, const QString& literal) const {
    const QString text = texto(number);
    return text.isEmpty() ? literal : text;
}

const tavo::confreg::Text& ApplicationState::language_table() const {
    return impl_->table.text();
}

void ApplicationState::invalidate_languages() {
    impl_->table.invalidate();
    const QString running = impl_->language;
    load_languages();
    impl_->language = running;
    emit languages_changed();
}

const tavo::confreg::Text& ApplicationState::data() const {
    return impl_->database.text();
}

void ApplicationState::load_gases() {
    tavo::Global::GasList list = tavo::Global::list_gases(impl_->database.text());
    QStringList names;
    names.reserve(static_cast<qsizetype>(list.names.size()));
    for (const std::string& name : list.names)
        names.append(gas_en_lista(*this, static_cast<std::int16_t>(names.size() + 1), name));
    impl_->gas_count = static_cast<std::int16_t>(list.names.size());
    impl_->gas_problems = std::move(list.problems);
    impl_->gas_names.setStringList(names);
}

QString ApplicationState::gas_problem(std::int16_t number) const {
    const auto& all = impl_->gas_problems;
    const auto found = std::ranges::find(all, number, &tavo::Global::GasProblem::gas);
    return found == all.end() || number < 1 ? QString() : texto_de_problema(*this, *found);
}

void ApplicationState::tell_problem(std::int16_t number) {
    if (const QString sentence = gas_problem(number); !sentence.isEmpty())
        set_status(sentence, PROBLEM_SHOWN);
}

QStringList ApplicationState::gas_problems() const {
    QStringList sentences;
    for (const tavo::Global::GasProblem& problem : impl_->gas_problems)
        sentences.append(texto_de_problema(*this, problem));
    return sentences;
}

std::int16_t ApplicationState::gas_count() const {
    return impl_->gas_count;
}

void ApplicationState::set_gas_count(std::int16_t n) {
    impl_->gas_count = n;
}

QAbstractItemModel* ApplicationState::gas_names() const {
    return &impl_->gas_names;
}

void ApplicationState::reload_gases() {
    impl_->database.invalidate();
    load_gases();
    emit gases_changed();
}

void ApplicationState::edit_gases(const std::function<void(tavo::confreg::Text&)>& edits) {
    tavo::confreg::edit(data_path(), site(), edits);
    reload_gases();
}

bool ApplicationState::remove_gas(std::int16_t number, const std::function<void(tavo::confreg::Text&)>& edits) {
    if (!tavo::confreg::edit(data_path(), site(), edits))
        return false;
    for (int i = 0; i < tavo::SlotTable::size; ++i)
        tavo::Global::follow_removal(impl_->slot_table[i], number);
    emit gas_removed(number);
    reload_gases();
    return true;
}

AmountUnit ApplicationState::amount_unit() const {
    return impl_->unit;
}

void ApplicationState::set_amount_unit(AmountUnit unit) {
    impl_->unit = unit;
    emit amount_unit_changed(unit);
}

tavo::SlotTable& ApplicationState::slot_table() {
    return impl_->slot_table;
}

void ApplicationState::set_current_row(int row) {
    if (row == current_row)
        return;
    current_row = row;
    emit current_row_changed(row);
}

void ApplicationState::register_window(const QString& name, Factory factory) {
    impl_->factories[name] = std::move(factory);
}

QStringList ApplicationState::window_names() const {
    QStringList names;
    for (const auto& [name, factory] : impl_->factories)
        names << name;
    return names;
}

QWidget* ApplicationState::window(const QString& name) {
    if (QWidget* existing = open_window(name))
        return existing;
    const auto factory = impl_->factories.find(name);
    if (factory == impl_->factories.end())
        return nullptr;
    QWidget* created = factory->second();
    created->setObjectName(name);
    created->setAttribute(Qt::WA_DeleteOnClose);
    created->installEventFilter(this);
    impl_->windows[name] = created;
    return created;
}

QWidget* ApplicationState::open_window(const QString& name) const {
    const auto found = impl_->windows.find(name);
    return found == impl_->windows.end() ? nullptr : found->second.data();
}

void ApplicationState::show_window(const QString& name) {
    if (QWidget* shown = window(name))
        emit show_requested(shown);
}

bool ApplicationState::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Close)
        return QObject::eventFilter(watched, event);
    // A closed window lives on until the event loop deletes it; whoever asks for it meanwhile gets a new one.
    watched->event(event);
    if (event->isAccepted())
        impl_->windows.erase(watched->objectName());
    return true;
}

ConditionsView* ApplicationState::conditions() {
    return dynamic_cast<ConditionsView*>(window(QStringLiteral("frmdatos")));
}

PlotView* ApplicationState::plot() const {
    return dynamic_cast<PlotView*>(open_window(QStringLiteral("frmgraficos")));
}

void ApplicationState::set_status(const QString& text, int milliseconds) {
    emit status_changed(text, milliseconds);
}

void ApplicationState::set_coordinates(const QString& text) {
    emit coordinates_changed(text);
}
