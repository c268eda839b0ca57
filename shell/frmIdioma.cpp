#include "shell/frmIdioma.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>
#include <string_view>

#include "controls/iconos.h"
#include "core/errors.h"
#include "core/text_numbers.h"
#include "shell/imprimir.h"
#include "shell/mensajes_qt.h"
#include "shell/textos.h"
#include "shell/tsv.h"

using idioma::Cell;

namespace {

constexpr int CRITICAL = 16, YES_NO = 36, YES_NO_CANCEL = 51;
constexpr int MARGIN = 12, SPACING = 6;
constexpr int TOLD = 8000;   // ms
constexpr int EXAMPLE = 24;  // text of the printed example line

QString text_of(const std::string& text) {
    return QString::fromStdString(text);
}

/// What a number means; empty where the program does not use it.
QString meaning_of(int number) {
    const auto* found = std::ranges::lower_bound(tavo::TEXT_NUMBERS, number, {}, &tavo::TextNumber::number);
    if (found == tavo::TEXT_NUMBERS.end() || found->number != number)
        return {};
    return QString::fromUtf8(found->meaning);
}

/// A name inside a sentence, which goes on in its own direction behind a name written from the right.
QString isolated(const QString& name) {
    const QChar first_strong_isolate(0x2068), pop_isolate(0x2069);
    return name.isRightToLeft() ? first_strong_isolate + name + pop_isolate : name;
}

bool is_line_break(QChar c) {
    return c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
}

QString without_line_breaks(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    std::replace_if(text.begin(), text.end(), is_line_break, u' ');
    return text;
}

}  // namespace

frmIdioma::frmIdioma(ApplicationState& estado, Mensajes& mensajes, Impresora& impresora, QWidget* padre)
    : QWidget(padre),
      estado_(estado),
      mensajes_(mensajes),
      impresora_(impresora),
      texto_([&estado](int number, const QString& literal) { return estado.texto(number, literal); }),
      tabla_(estado.language_table(), estado.language().toStdString()),
      modelo_(new ModeloIdiomas(tabla_, texto_, this)) {
    setObjectName(QStringLiteral("frmIdioma"));
    setWindowIcon(icono(QStringLiteral("idioma")));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    column->setSpacing(SPACING);
    column->addLayout(crear_filtro());
    column->addWidget(crear_rejilla(), 1);
    lbcontexto = new LineaEstado(3, this);
    lbcontexto->setObjectName(QStringLiteral("lbcontexto"));
    column->addWidget(lbcontexto);
    column->addLayout(crear_progreso());
    column->addLayout(crear_botones());
    rtxtprint = new QTextEdit(this);
    rtxtprint->setObjectName(QStringLiteral("rtxtprint"));
    rtxtprint->hide();
    crear_avisos();
    setFocusProxy(MSFlexIdiomas);
    if (modelo_->rowCount() > 0 && modelo_->columnCount() > 1)
        MSFlexIdiomas->choose(modelo_->index(0, 1));
    mostrar();
}

frmIdioma::~frmIdioma() {
    // The grid looks at the table as long as it lives, and the focus leaves the box when it goes.
    txtidioma->removeEventFilter(this);
    for (QObject* child : findChildren<QObject*>())
        child->disconnect(this);
    delete MSFlexIdiomas;
}

// ---- Layout

QBoxLayout* frmIdioma::crear_filtro() {
    txtfiltro = new QLineEdit(this);
    txtfiltro->setObjectName(QStringLiteral("txtfiltro"));
    txtfiltro->setClearButtonEnabled(true);
    const QString hint = texto_(785, QStringLiteral("Buscar un número o un texto"));
    txtfiltro->setPlaceholderText(hint);
    txtfiltro->setAccessibleName(hint);
    cmbmostrar = new QComboBox(this);
    cmbmostrar->setObjectName(QStringLiteral("cmbmostrar"));
    cmbmostrar->addItems({texto_(786, QStringLiteral("Todos los textos")),
                          texto_(787, QStringLiteral("Solo los que faltan")),
                          texto_(788, QStringLiteral("Solo los de letra repetida")),
                          texto_(789, QStringLiteral("Solo los de valores distintos"))});
    cmbmostrar->setAccessibleName(cmbmostrar->itemText(0));
    btfallo = new QPushButton(texto_(801, QStringLiteral("Fallo siguiente")), this);
    btfallo->setObjectName(QStringLiteral("btfallo"));
    btfallo->setToolTip(btfallo->text() + QStringLiteral(" (F8)"));
    auto* row = new QHBoxLayout;
    row->setSpacing(SPACING);
    row->addWidget(txtfiltro, 1);
    row->addWidget(cmbmostrar);
    row->addWidget(btfallo);
    return row;
}

QWidget* frmIdioma::crear_rejilla() {
    MSFlexIdiomas = new RejillaIdiomas(modelo_, this);
    MSFlexIdiomas->setObjectName(QStringLiteral("MSFlexIdiomas"));
    MSFlexIdiomas->setAccessibleName(estado_.texto(25));
    txtidioma = new QLineEdit(MSFlexIdiomas->viewport());
    txtidioma->setObjectName(QStringLiteral("txtidioma"));
    txtidioma->setAccessibleName(estado_.texto(28));
    txtidioma->setToolTip(texto_(
        805, QStringLiteral("Intro pasa al texto de abajo, Tab al de la derecha; Esc deja el texto como estaba")));
    txtidioma->setMaxLength(std::numeric_limits<int>::max());
    txtidioma->installEventFilter(this);
    txtidioma->hide();
    return MSFlexIdiomas;
}

QBoxLayout* frmIdioma::crear_progreso() {
    lbprogreso = new QLabel(this);
    lbprogreso->setObjectName(QStringLiteral("lbprogreso"));
    lbfallos = new QLabel(this);
    lbfallos->setObjectName(QStringLiteral("lbfallos"));
    for (QLabel* label : {lbprogreso, lbfallos}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setMinimumHeight(2 * label->fontMetrics().lineSpacing());  // nothing moves with the language
    }
    barra = new QProgressBar(this);
    barra->setObjectName(QStringLiteral("barra"));
    barra->setMaximumWidth(24 * fontMetrics().averageCharWidth());
    QSizePolicy place = barra->sizePolicy();
    place.setRetainSizeWhenHidden(true);
    barra->setSizePolicy(place);
    auto* row = new QHBoxLayout;
    row->setSpacing(MARGIN);
    row->addWidget(barra);
    row->addWidget(lbprogreso, 1);
    row->addWidget(lbfallos, 1);
    return row;
}

QBoxLayout* frmIdioma::crear_botones() {
    btnuevo = crear_boton("btnuevo", 9);
    btimprimir = crear_boton("btimprimir", 37);
    btguardar = crear_boton("btguardar", 38);
    auto* row = new QHBoxLayout;
    row->setSpacing(SPACING);
    row->addWidget(btnuevo);
    row->addWidget(btimprimir);
    row->addStretch();
    row->addWidget(btguardar);
    return row;
}

QPushButton* frmIdioma::crear_boton(const char* name, int caption) {
    auto* button = new QPushButton(estado_.texto(caption), this);
    button->setObjectName(QLatin1String(name));
    return button;
}

void frmIdioma::crear_avisos() {
    connect(MSFlexIdiomas, &QTableView::clicked, this, &frmIdioma::MSFlexIdiomas_Click);
    connect(MSFlexIdiomas, &RejillaIdiomas::edit_requested, this,
            [this](const QModelIndex& index, const QString& typed) {
                llevar(index);
                if (!typed.isEmpty())
                    txtidioma->insert(typed);  // everything is selected: it takes the place of the text
            });
    connect(MSFlexIdiomas, &RejillaIdiomas::copy_requested, this, &frmIdioma::copiar);
    connect(MSFlexIdiomas, &RejillaIdiomas::paste_requested, this,
            [this] { pegar(QGuiApplication::clipboard()->text()); });
    connect(MSFlexIdiomas, &RejillaIdiomas::clear_requested, this, &frmIdioma::borrar);
    connect(MSFlexIdiomas, &RejillaIdiomas::undo_requested, this, [this] { deshacer(false); });
    connect(MSFlexIdiomas, &RejillaIdiomas::redo_requested, this, [this] { deshacer(true); });
    connect(MSFlexIdiomas, &RejillaIdiomas::moved, this, &frmIdioma::colocar);
    connect(MSFlexIdiomas->selectionModel(), &QItemSelectionModel::currentChanged, this, &frmIdioma::mostrar);
    connect(MSFlexIdiomas->horizontalHeader(), &QHeaderView::sectionDoubleClicked, this, [this](int section) {
        if (es_nuevo(section))
            nombrar({});
    });
    MSFlexIdiomas->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(MSFlexIdiomas, &QWidget::customContextMenuRequested, this, [this](const QPoint& place) {
        menu_del_idioma(MSFlexIdiomas->currentIndex().column(), MSFlexIdiomas->viewport()->mapToGlobal(place));
    });
    QHeaderView* names = MSFlexIdiomas->horizontalHeader();
    names->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(names, &QWidget::customContextMenuRequested, this, [this, names](const QPoint& place) {
        menu_del_idioma(names->logicalIndexAt(place), names->viewport()->mapToGlobal(place));
    });
    connect(txtidioma, &QLineEdit::textChanged, this, &frmIdioma::txtidioma_Change);
    connect(txtfiltro, &QLineEdit::textChanged, this, &frmIdioma::txtfiltro_Change);
    connect(cmbmostrar, &QComboBox::currentIndexChanged, this, &frmIdioma::txtfiltro_Change);
    connect(btfallo, &QPushButton::clicked, this, &frmIdioma::btfallo_Click);
    connect(btnuevo, &QPushButton::clicked, this, &frmIdioma::btnuevo_Click);
    connect(btimprimir, &QPushButton::clicked, this, &frmIdioma::btimprimir_Click);
    connect(btguardar, &QPushButton::clicked, this, &frmIdioma::btguardar_Click);
    const auto key = [this](const QKeySequence& keys, const auto& run) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, run);
    };
    key(QKeySequence(Qt::Key_F8), &frmIdioma::btfallo_Click);
    key(QKeySequence::Save, &frmIdioma::btguardar_Click);
    key(QKeySequence::Find, [this] { txtfiltro->setFocus(Qt::ShortcutFocusReason); });
}

// ---- The box over the cells

void frmIdioma::MSFlexIdiomas_Click(const QModelIndex& index) {
    if (index.column() > 0 && MSFlexIdiomas->selectionModel()->selectedIndexes().size() == 1)
        llevar(index);
}

void frmIdioma::llevar(const QModelIndex& index) {
    dejar();
    if (!index.isValid() || index.column() < 1)
        return;
    MSFlexIdiomas->choose(index);
    MSFlexIdiomas->scrollTo(index);
    en_edicion_ = index;
    original_ = modelo_->texto(index);
    tabla_.begin_step();
    {
        const QScopedValueRollback silent(llevando_, true);
        txtidioma->setText(original_);
    }
    colocar();
    txtidioma->show();
    txtidioma->setFocus(Qt::OtherFocusReason);
    txtidioma->selectAll();
}

/// As wide as its text where there is room.
void frmIdioma::colocar() {
    if (!en_edicion_.isValid())
        return;
    QRect place = MSFlexIdiomas->visualRect(en_edicion_);
    const int room = MSFlexIdiomas->viewport()->width();
    const int wanted = txtidioma->fontMetrics().horizontalAdvance(txtidioma->text()) + 4 * MARGIN;
    place.setWidth(std::max(place.width(), std::min(wanted, room)));
    if (place.right() >= room && place.left() < room)
        place.moveLeft(std::max(0, room - place.width()));
    txtidioma->setGeometry(place);
}

void frmIdioma::dejar() {
    if (!en_edicion_.isValid())
        return;
    const QModelIndex cell = en_edicion_;
    en_edicion_ = QModelIndex();
    if (modelo_->recortar(cell))
        estado_.set_status(
            texto_(797, QStringLiteral("Los saltos de línea y los blancos de los extremos no se guardan")), TOLD);
    tabla_.begin_step();
    if (txtidioma->hasFocus())
        MSFlexIdiomas->setFocus(Qt::OtherFocusReason);
    txtidioma->hide();
    mostrar();
}

void frmIdioma::txtidioma_Change(const QString& text) {
    if (llevando_ || !en_edicion_.isValid())
        return;
    if (std::any_of(text.begin(), text.end(), is_line_break)) {  // pasted or dropped
        const int cursor = txtidioma->cursorPosition();
        txtidioma->selectAll();
        txtidioma->insert(without_line_breaks(text));  // and so here again
        txtidioma->setCursorPosition(cursor);
        estado_.set_status(
            texto_(797, QStringLiteral("Los saltos de línea y los blancos de los extremos no se guardan")), TOLD);
        return;
    }
    modelo_->escribir(en_edicion_, text);
    colocar();
    mostrar();
}

bool frmIdioma::eventFilter(QObject* watched, QEvent* event) {
    if (watched != txtidioma)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress)
        return txtidioma_KeyDown(*static_cast<QKeyEvent*>(event));
    if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            dejar();
    }
    return false;
}

bool frmIdioma::txtidioma_KeyDown(const QKeyEvent& event) {
    const bool back = event.modifiers().testFlag(Qt::ShiftModifier);
    switch (event.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            mover(back ? -1 : 1, 0);
            return true;
        case Qt::Key_Down:
        case Qt::Key_Up:
            mover(event.key() == Qt::Key_Down ? 1 : -1, 0);
            return true;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            if (event.modifiers().testFlag(Qt::ControlModifier))
                return false;
            mover(0, event.key() == Qt::Key_Tab ? 1 : -1);
            return true;
        case Qt::Key_Escape:
            if (txtidioma->text() == original_)
                dejar();
            else
                txtidioma->setText(original_);
            return true;
        default:
            break;
    }
    const QString pasted = event.matches(QKeySequence::Paste) ? QGuiApplication::clipboard()->text() : QString();
    if (!pasted.contains(u'\t'))
        return false;
    dejar();
    pegar(pasted);
    return true;
}

/// The box to a neighbour; past the last column to the next row.
void frmIdioma::mover(int rows, int columns) {
    const int last = modelo_->columnCount() - 1;
    int row = en_edicion_.row() + rows, column = en_edicion_.column() + columns;
    if (column > last || column < 1) {
        row += columns;
        column = column < 1 ? last : 1;
    }
    if (row < 0 || row >= modelo_->rowCount())
        return dejar();
    llevar(modelo_->index(row, column));
}

// ---- Blocks of cells

void frmIdioma::copiar() {
    const QModelIndexList cells = MSFlexIdiomas->block();
    if (cells.isEmpty())
        return;
    int left = cells.front().column(), right = left;
    for (const QModelIndex& cell : cells) {
        left = std::min(left, cell.column());
        right = std::max(right, cell.column());
    }
    tsv::Block block;
    for (int last = -1; const QModelIndex& cell : cells) {
        if (std::exchange(last, cell.row()) != cell.row())
            block.emplace_back(static_cast<std::size_t>(right - left + 1));
        block.back()[static_cast<std::size_t>(cell.column() - left)] = modelo_->texto(cell).toStdString();
    }
    QString text = text_of(tsv::escribir(block));
    if (cells.size() == 1)
        text.chop(1);
    QGuiApplication::clipboard()->setText(text);
}

/// A block from its corner on; one text into every chosen cell.
void frmIdioma::pegar(const QString& text) {
    const QModelIndexList cells = MSFlexIdiomas->block();
    const tsv::Block block = tsv::leer(text.toStdString());
    if (cells.isEmpty() || block.empty())
        return;
    tabla_.begin_step();
    const auto put = [this](const QModelIndex& index, const std::string& value) {
        if (!index.isValid())
            return;
        modelo_->escribir(index, without_line_breaks(text_of(value)));
        modelo_->recortar(index);
    };
    if (block.size() == 1 && block[0].size() == 1) {
        for (const QModelIndex& cell : cells)
            put(cell, block[0][0]);
    } else {
        int row = cells.front().row();
        for (const std::vector<std::string>& line : block) {
            int column = cells.front().column();
            for (const std::string& value : line)
                put(modelo_->index(row, column++), value);
            ++row;
        }
    }
    tabla_.begin_step();
    mostrar();
}

void frmIdioma::borrar() {
    tabla_.begin_step();
    for (const QModelIndex& cell : MSFlexIdiomas->block())
        modelo_->escribir(cell, {});
    tabla_.begin_step();
    mostrar();
}

void frmIdioma::deshacer(bool redo) {
    const std::vector<Cell> cells = redo ? tabla_.redo() : tabla_.undo();
    modelo_->refresh(cells);
    if (!cells.empty())
        ir(cells.back());
    mostrar();
}

/// The cursor to a cell of the table, if it is shown.
void frmIdioma::ir(const Cell& cell) {
    if (const auto row = modelo_->row_of(cell.row))
        MSFlexIdiomas->choose(modelo_->index(*row, static_cast<int>(cell.column) + 1));
}

// ---- Finding

void frmIdioma::txtfiltro_Change() {
    dejar();
    const QModelIndex current = MSFlexIdiomas->currentIndex();
    const Cell cell = current.isValid() && current.column() > 0 ? modelo_->cell(current) : Cell{0, 0};
    modelo_->filter(txtfiltro->text(), static_cast<ModeloIdiomas::Muestra>(cmbmostrar->currentIndex()));
    if (modelo_->rowCount() > 0 && modelo_->columnCount() > 1)
        MSFlexIdiomas->choose(modelo_->index(modelo_->row_of(cell.row).value_or(0), static_cast<int>(cell.column) + 1));
    mostrar();
}

void frmIdioma::btfallo_Click() {
    dejar();
    const int columns = modelo_->columnCount() - 1;
    const int cells = modelo_->rowCount() * columns;
    const QModelIndex current = MSFlexIdiomas->currentIndex();
    const int start = current.isValid() ? current.row() * columns + current.column() - 1 : cells - 1;
    for (int step = 1; step <= cells; ++step) {
        const int place = (start + step) % cells;
        const QModelIndex index = modelo_->index(place / columns, place % columns + 1);
        if (index.data(ModeloIdiomas::FAULTS).toInt() != 0)
            return llevar(index);
    }
    estado_.set_status(texto_(802, QStringLiteral("No hay fallos en lo que se muestra")), TOLD);
}

// ---- Languages, file, paper

QString frmIdioma::titulo() const {
    return sin_mnemonico(estado_.texto(7));
}

void frmIdioma::btnuevo_Click() {
    dejar();
    if (tabla_.pending())
        nombrar(texto_(800, QStringLiteral("Ya hay un idioma nuevo: guárdelo antes de añadir otro")));
    else
        nombrar({});
}

/// Asks for the name of the new language, which may be there already; `notice` stands above the question.
void frmIdioma::nombrar(const QString& notice) {
    const QString prompt = texto_(790, QStringLiteral("Nombre del idioma nuevo:"));
    const auto pending = tabla_.pending();
    const auto name = mensajes_.pedir(notice.isEmpty() ? prompt : notice + u'\n' + prompt, titulo(),
                                      pending ? text_of(tabla_.name(*pending)) : QString());
    if (!name)
        return;
    if (pending) {
        modelo_->rename_pending(*name);
    } else {
        modelo_->add_language(*name);
        const int row = std::max(0, MSFlexIdiomas->currentIndex().row());
        MSFlexIdiomas->choose(modelo_->index(row, modelo_->columnCount() - 1));
        MSFlexIdiomas->setFocus(Qt::OtherFocusReason);
    }
    mostrar();
}

bool frmIdioma::es_nuevo(int column) const {
    return column > 0 && tabla_.pending() == static_cast<std::size_t>(column - 1);
}

/// Only a language that is not in the file yet has one.
void frmIdioma::menu_del_idioma(int column, const QPoint& place) {
    if (!es_nuevo(column))
        return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(texto_(834, QStringLiteral("Cambiar el nombre...")), this, [this] { nombrar({}); });
    menu->addAction(texto_(835, QStringLiteral("Quitar este idioma")), this, &frmIdioma::quitar);
    menu->popup(place);
}

void frmIdioma::quitar() {
    dejar();
    const auto pending = tabla_.pending();
    if (!pending)
        return;
    const QString question = texto_(836, QStringLiteral("¿Quitar el idioma %1 y todos sus textos?"))
                                 .arg(isolated(text_of(tabla_.name(*pending))));
    if (mensajes_.mostrar(question, YES_NO, titulo()) != Respuesta::Si)
        return;
    const QModelIndex current = MSFlexIdiomas->currentIndex();
    modelo_->remove_pending();
    MSFlexIdiomas->choose(
        modelo_->index(std::max(0, current.row()), std::min(current.column(), modelo_->columnCount() - 1)));
    mostrar();
}

/// Whether to give up because another program wrote the file meanwhile.
bool frmIdioma::cambiada_por_otros() {
    if (tabla_.same_as(tavo::confreg::read(estado_.language_path())))
        return false;
    const QString question =
        texto_(799, QStringLiteral("Otro programa ha cambiado el archivo de idiomas. ¿Guardar y perder esos cambios?"));
    return mensajes_.mostrar(question, YES_NO, titulo()) != Respuesta::Si;
}

/// Whether everything is in the file now.
bool frmIdioma::btguardar_Click() {
    dejar();
    try {
        if (cambiada_por_otros())
            return false;
        const bool was_utf8 = tabla_.is_utf8();
        const idioma::Resultado outcome =
            idioma::guardar(tabla_, estado_.language_path(), estado_.site(), estado_.language().toStdString());
        mostrar();
        if (outcome == idioma::Resultado::NombreRechazado) {
            mensajes_.mostrar(estado_.texto(185), CRITICAL, titulo());
            return false;
        }
        estado_.invalidate_languages();
        estado_.set_status(
            tabla_.is_utf8() && !was_utf8
                ? texto_(804, QStringLiteral("La tabla de idiomas está guardada en UTF-8, por las letras que no caben "
                                             "en Windows-1252"))
                : texto_(803, QStringLiteral("La tabla de idiomas está guardada")),
            TOLD);
    } catch (const tavo::Error& error) {
        mensajes_.mostrar(mensaje_de_error(error, estado_), CRITICAL, titulo());
        return false;
    }
    return true;
}

/// A block of lines per language, a line per text that is shown.
QString frmIdioma::lineas_para_imprimir() const {
    QString lines;
    for (int column = 1; column < modelo_->columnCount(); ++column) {
        lines +=
            QStringLiteral("\n[%1]\n").arg(modelo_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        for (int row = 0; row < modelo_->rowCount(); ++row)
            lines += QStringLiteral("%1 = %2\n")
                         .arg(modelo_->index(row, 0).data().toString(), modelo_->index(row, column).data().toString());
    }
    return lines;
}

void frmIdioma::btimprimir_Click() {
    dejar();
    const QString example = QStringLiteral("%1 = %2").arg(EXAMPLE).arg(estado_.texto(EXAMPLE));
    QString heading = estado_.texto(25) + u'\n' + estado_.texto(27) + u' ' + example + u'\n';
    if (const auto all = static_cast<int>(tabla_.rows()); modelo_->rowCount() < all)
        heading += texto_(838, QStringLiteral("Solo los textos a la vista en la tabla: %1 de %2"))
                       .arg(modelo_->rowCount())
                       .arg(all) +
                   u'\n';
    rtxtprint->setPlainText(heading + lineas_para_imprimir().chopped(1));
    impresora_.imprimir(this, imprimir::documento(estado_, estado_.texto(25), rtxtprint->toPlainText().split(u'\n')));
}

void frmIdioma::closeEvent(QCloseEvent* event) {
    dejar();
    event->accept();
    if (!tabla_.modified())
        return;
    const QString question = QStringLiteral("%1 %2?").arg(estado_.texto(40), estado_.texto(28));
    const Respuesta answer = mensajes_.mostrar(question, YES_NO_CANCEL, titulo());
    event->setAccepted(answer == Respuesta::No || (answer == Respuesta::Si && btguardar_Click()));
}

// ---- What is told

QString frmIdioma::contexto(const Cell& cell) const {
    const idioma::Fila& row = tabla_.row(cell.row);
    const QString meaning = meaning_of(row.number);
    const QString use =
        meaning.isEmpty()
            ? QStringLiteral("%1: %2").arg(text_of(row.key),
                                           texto_(806, QStringLiteral("El programa no usa este número")))
            : texto_(837, QStringLiteral("%1 (nota para traductores, en inglés): %2")).arg(text_of(row.key), meaning);
    if (cell.column == tabla_.source())
        return use;
    return QStringLiteral("%1: %2\n")
               .arg(isolated(text_of(tabla_.name(tabla_.source()))),
                    text_of(tabla_.text({cell.row, tabla_.source()}))) +
           use;
}

/// Title, context and progress follow the table and its current cell.
void frmIdioma::mostrar() {
    setWindowTitle(tabla_.modified() ? titulo() + QStringLiteral("[*]") : titulo());
    setWindowModified(tabla_.modified());
    const QModelIndex index = MSFlexIdiomas->currentIndex();
    if (!index.isValid() || index.column() < 1) {
        lbcontexto->set_outcome({});
        return;
    }
    const Cell cell = modelo_->cell(index);
    const QStringList faults = modelo_->sentences(index);
    lbcontexto->set_outcome(contexto(cell), faults.join(QStringLiteral(" · ")));

    const idioma::Progress progress = tabla_.progress(cell.column);
    const auto number = [](std::size_t count) { return QString::number(count); };
    const QString name = isolated(text_of(tabla_.name(cell.column)));
    const bool is_source = cell.column == tabla_.source();
    lbprogreso->setText(is_source ? name
                                  : texto_(791, QStringLiteral("%1: %2 de %3 textos son distintos de los de %4"))
                                        .arg(name, number(progress.translated), number(progress.total),
                                             isolated(text_of(tabla_.name(tabla_.source())))));
    lbfallos->setText(texto_(792, QStringLiteral("Faltan: %1. Letras repetidas: %2. Valores distintos: %3."))
                          .arg(number(progress.missing), number(progress.letters), number(progress.values)));
    barra->setRange(0, std::max(1, static_cast<int>(progress.total)));
    barra->setValue(static_cast<int>(progress.translated));
    barra->update();  // it takes a step of less than 1 % for nothing to paint
    barra->setVisible(!is_source);
    barra->setAccessibleName(lbprogreso->text());
}
