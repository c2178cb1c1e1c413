#include "setup_pages.h"

#include "gui/common/color_picker.h"
#include "gui/common/message_reporter.h"
#include "gui/common/services.h"

#include "engine/parser.h"
#include "graph/chart_data.h"
#include "graph/graph_colors.h"
#include "graph/graph_limits.h"
#include "graph/graph_types.h"
#include "graph/setup_checks.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

#include <list>

namespace quorvex::gui {

namespace {

QString text_of(const std::string& text) { return QString::fromStdString(text); }

constexpr const char* k_caption = "Graphing Utility";

} // namespace

void SetupPage::tell(const std::string& text) {
    MessageReporter reporter(this, m_services ? m_services->collected_messages : nullptr);
    reporter.report(text, k_caption, engine::MessageKind::Information);
}

int SetupPage::ask(const std::string& text, bool cancel) {
    const int buttons = QMessageBox::Yes | QMessageBox::No | (cancel ? QMessageBox::Cancel : QMessageBox::NoButton);
    if (!m_services) return QMessageBox::question(this, QString::fromLatin1(k_caption), text_of(text), QMessageBox::StandardButtons(buttons));
    return ask_user(*m_services, this, QString::fromLatin1(k_caption), text_of(text), buttons);
}

// --- Functions ------------------------------------------------------------------------------

FunctionsPage::FunctionsPage(engine::Parser& parser, QWidget* parent)
    : SetupPage(parent), m_parser(parser), m_defined(new QListWidget(this)), m_chosen(new QListWidget(this)) {
    auto* add = new QPushButton(tr("&Add >>"), this);
    auto* remove = new QPushButton(tr("<< &Remove"), this);
    auto* buttons = new QVBoxLayout;
    buttons->addStretch();
    buttons->addWidget(add);
    buttons->addWidget(remove);
    buttons->addStretch();
    auto* grid = new QGridLayout(this);
    grid->addWidget(new QLabel(tr("Defined Functions"), this), 0, 0);
    grid->addWidget(new QLabel(tr("Functions To Graph"), this), 0, 2);
    grid->addWidget(m_defined, 1, 0);
    grid->addLayout(buttons, 1, 1);
    grid->addWidget(m_chosen, 1, 2);
    connect(add, &QPushButton::clicked, this, &FunctionsPage::add_selected);
    connect(m_defined, &QListWidget::itemDoubleClicked, add, &QPushButton::click);
    connect(remove, &QPushButton::clicked, this, &FunctionsPage::remove_selected);
    connect(m_chosen, &QListWidget::itemDoubleClicked, remove, &QPushButton::click);
}

bool FunctionsPage::add_selected() {
    std::vector<engine::Function> graphed;
    for (int row = 0; row < m_chosen->count(); ++row) graphed.emplace_back(m_chosen->item(row)->text().toStdString(), "");
    const QList<QListWidgetItem*> selected = m_defined->selectedItems();
    const std::string candidate = selected.isEmpty() ? std::string() : selected.front()->text().toStdString();
    if (const std::optional<graph::SetupProblem> refused = graph::check_function_to_add(graphed, candidate, m_parser)) {
        if (refused->offer != graph::SetupOffer::EditFunction) {
            tell(refused->message);
        } else if (ask(refused->message) == QMessageBox::Yes && edit_function) {
            edit_function(text_of(refused->variable));
        }
        return false;
    }
    m_chosen->addItem(text_of(candidate));
    m_chosen->setCurrentRow(m_chosen->count() - 1);
    return true;
}

bool FunctionsPage::remove_selected() {
    const QList<QListWidgetItem*> selected = m_chosen->selectedItems();
    if (const std::optional<graph::SetupProblem> refused =
            graph::check_function_to_remove(static_cast<size_t>(m_chosen->count()), !selected.isEmpty())) {
        tell(refused->message);
        return false;
    }
    qDeleteAll(selected);
    return true;
}

void FunctionsPage::load(const document::DocumentGraph& graph) {
    m_defined->clear();
    for (int i = 0; i < m_parser.function_count(); ++i)
        if (const char* name = m_parser.get_func_name(i)) m_defined->addItem(QString::fromUtf8(name));
    m_chosen->clear();
    for (const engine::Function& function : graph.Data.Functions) m_chosen->addItem(text_of(function.full_name()));
}

void FunctionsPage::store(document::DocumentGraph& graph) {
    std::vector<engine::Function> functions;
    std::vector<document::FunctionStyle> styles;
    for (int row = 0; row < m_chosen->count(); ++row) {
        const std::string name = m_chosen->item(row)->text().toStdString();
        // A function graphed already keeps its label and style.
        const auto& old = graph.Data.Functions;
        const auto kept = std::find_if(old.begin(), old.end(), [&](const auto& f) { return f.full_name() == name; });
        if (kept != old.end()) {
            functions.push_back(*kept);
            styles.push_back(graph.StyleOf(static_cast<size_t>(kept - old.begin())));
            continue;
        }
        const int index = m_parser.find_function(name.c_str());
        const engine::Function* declared = index >= 0 ? m_parser.function_at(index) : nullptr;
        functions.emplace_back(name, declared ? declared->value() : std::string());
        styles.emplace_back();
    }
    const bool changed = functions.size() != graph.Data.Functions.size() ||
                         !std::equal(functions.begin(), functions.end(), graph.Data.Functions.begin(),
                                     [](const auto& a, const auto& b) { return a.full_name() == b.full_name(); });
    graph.Data.ReplaceFunctions(std::move(functions)); // point labels follow their series
    graph.FunctionStyles = std::move(styles);
    graph.Data.SetComVarList();
    graph.Data.DelUncommonVars();
    if (changed) {
        graph.Data.SetDefaultHeader(false);
        graph.Data.SetDefaultFooter(false);
        graph.Data.SetDefaultYAxisTitle(false);
    }
}

// --- Variables ------------------------------------------------------------------------------

VariablesPage::VariablesPage(QWidget* parent)
    : SetupPage(parent), m_axis(new QComboBox(this)), m_low(new QDoubleSpinBox(this)), m_high(new QDoubleSpinBox(this)),
      m_points(new QSpinBox(this)), m_z_axis(new QComboBox(this)), m_z_low(new QDoubleSpinBox(this)),
      m_z_high(new QDoubleSpinBox(this)), m_z_points(new QSpinBox(this)) {
    for (QDoubleSpinBox* end : {m_low, m_high, m_z_low, m_z_high}) {
        end->setRange(-1e12, 1e12);
        end->setDecimals(6);
    }
    for (QSpinBox* points : {m_points, m_z_points}) {
        points->setRange(1, 1000000);
        points->setGroupSeparatorShown(true);
    }
    auto* form = new QFormLayout(this);
    form->addRow(new QLabel(tr("The variable the functions share that runs along the X axis, and its range."), this));
    form->addRow(tr("&X axis variable:"), m_axis);
    form->addRow(tr("&From:"), m_low);
    form->addRow(tr("&To:"), m_high);
    form->addRow(tr("&Points:"), m_points);
    form->addRow(new QLabel(tr("A second variable on a Z axis makes the graph a surface."), this));
    form->addRow(tr("&Z axis variable:"), m_z_axis);
    form->addRow(tr("F&rom:"), m_z_low);
    form->addRow(tr("T&o:"), m_z_high);
    form->addRow(tr("Poi&nts:"), m_z_points);
    const auto enable_z = [this] {
        const bool on = m_z_axis->currentIndex() > 0;
        for (QWidget* field : std::initializer_list<QWidget*>{m_z_low, m_z_high, m_z_points}) field->setEnabled(on);
    };
    connect(m_z_axis, &QComboBox::currentIndexChanged, this, enable_z);
    enable_z();
}

void VariablesPage::load(const document::DocumentGraph& graph) {
    // A graph made in one step (a function and its X range) has not listed its functions' shared
    // variables yet; they are what the axes can be.
    std::list<engine::Variable> shared = graph.Data.ComVars;
    if (shared.empty() && !graph.Data.Functions.empty()) {
        graph::GraphData listed = graph.Data;
        listed.SetComVarList();
        shared = listed.ComVars;
    }
    m_axis->clear();
    for (const engine::Variable& variable : shared) m_axis->addItem(text_of(variable.name()));
    const graph::VariableCopy& x = graph.Data.XAxisVar;
    if (x && m_axis->findText(text_of(x->name())) < 0) m_axis->addItem(text_of(x->name()));
    m_axis->setCurrentIndex(x ? m_axis->findText(text_of(x->name())) : 0);
    m_low->setValue(x ? x->low().real() : -10);
    m_high->setValue(x ? x->high().real() : 10);
    m_points->setValue(x ? static_cast<int>(x->num_points()) : 201);

    const graph::VariableCopy& z = graph.Data.ZAxisVar;
    m_z_axis->clear();
    m_z_axis->addItem(tr("(none: a 2-D graph)"));
    for (const engine::Variable& variable : shared) m_z_axis->addItem(text_of(variable.name()));
    if (z && m_z_axis->findText(text_of(z->name())) < 0) m_z_axis->addItem(text_of(z->name()));
    m_z_axis->setCurrentIndex(z ? m_z_axis->findText(text_of(z->name())) : 0);
    m_z_low->setValue(z ? z->low().real() : -10);
    m_z_high->setValue(z ? z->high().real() : 10);
    m_z_points->setValue(z ? static_cast<int>(z->num_points()) : 31);
}

void VariablesPage::store(document::DocumentGraph& graph) {
    const std::string name = m_axis->currentText().toStdString();
    if (name.empty()) return;
    graph.Data.XAxisVar = graph::VariableCopy(engine::Variable(name, engine::complex(m_low->value(), 0),
                                                               engine::complex(m_high->value(), 0), m_points->value()));
    graph.Data.SetDefaultXAxisTitle(false);
    const std::string z_name = m_z_axis->currentIndex() > 0 ? m_z_axis->currentText().toStdString() : std::string();
    if (z_name.empty() || z_name == name) {
        graph.Data.ZAxisVar = {};
        return;
    }
    graph.Data.ZAxisVar = graph::VariableCopy(engine::Variable(z_name, engine::complex(m_z_low->value(), 0),
                                                               engine::complex(m_z_high->value(), 0),
                                                               m_z_points->value()));
    graph.Data.SetDefaultZAxisTitle(false);
}

// --- Labels ---------------------------------------------------------------------------------

LabelsPage::LabelsPage(QWidget* parent)
    : SetupPage(parent), m_header(new QLineEdit(this)), m_footer(new QLineEdit(this)), m_x(new QLineEdit(this)),
      m_y(new QLineEdit(this)), m_z(new QLineEdit(this)) {
    auto* defaults = new QPushButton(tr("&Default Titles"), this);
    // The chart lays a title out at a cost that grows with the square of its length.
    for (QLineEdit* edit : {m_header, m_footer, m_x, m_y, m_z}) {
        edit->setMaxLength(static_cast<int>(graph::k_max_graph_text));
        edit->setToolTip(tr("A title holds at most %1 characters.").arg(graph::k_max_graph_text));
    }
    auto* form = new QFormLayout(this);
    form->addRow(tr("&Header:"), m_header);
    form->addRow(tr("&Footer:"), m_footer);
    form->addRow(tr("&X axis title:"), m_x);
    form->addRow(tr("&Y axis title:"), m_y);
    form->addRow(tr("&Z axis title (a surface):"), m_z);
    form->addRow(defaults);
    connect(defaults, &QPushButton::clicked, this, [this] {
        m_shown.Data.SetDefaultHeader(true);
        m_shown.Data.SetDefaultFooter(true);
        m_shown.Data.SetDefaultXAxisTitle(true);
        m_shown.Data.SetDefaultYAxisTitle(true);
        m_shown.Data.SetDefaultZAxisTitle(true);
        m_defaults_asked = true;
        m_header->setText(text_of(m_shown.Data.Header));
        m_footer->setText(text_of(m_shown.Data.Footer));
        m_x->setText(text_of(m_shown.Data.XAxisTitle));
        m_y->setText(text_of(m_shown.Data.YAxisTitle));
        m_z->setText(text_of(m_shown.Data.ZAxisTitle));
    });
}

void LabelsPage::load(const document::DocumentGraph& graph) {
    m_shown = graph;
    m_defaults_asked = false;
    m_header->setText(text_of(graph.Data.Header));
    m_footer->setText(text_of(graph.Data.Footer));
    m_x->setText(text_of(graph.Data.XAxisTitle));
    m_y->setText(text_of(graph.Data.YAxisTitle));
    m_z->setText(text_of(graph.Data.ZAxisTitle));
}

void LabelsPage::store(document::DocumentGraph& graph) {
    graph::GraphData& data = graph.Data;
    if (m_defaults_asked) {
        data.SetDefaultHeader(true);
        data.SetDefaultFooter(true);
        data.SetDefaultXAxisTitle(true);
        data.SetDefaultYAxisTitle(true);
        data.SetDefaultZAxisTitle(true);
    }
    // Only a title typed differently from what the page showed is the user's own from now on:
    // the other pages (new functions: new default titles) may have changed the graph since.
    const auto put = [](QLineEdit* edit, const std::string& shown, auto setter) {
        const std::string now = edit->text().toStdString();
        if (now != shown) setter(now.c_str(), true);
    };
    const graph::GraphData& shown = m_shown.Data;
    put(m_header, shown.Header, [&data](const char* t, bool u) { data.SetHeader(t, u); });
    put(m_footer, shown.Footer, [&data](const char* t, bool u) { data.SetFooter(t, u); });
    put(m_x, shown.XAxisTitle, [&data](const char* t, bool u) { data.SetXAxisTitle(t, u); });
    put(m_y, shown.YAxisTitle, [&data](const char* t, bool u) { data.SetYAxisTitle(t, u); });
    put(m_z, shown.ZAxisTitle, [&data](const char* t, bool u) { data.SetZAxisTitle(t, u); });
}

// --- Types ----------------------------------------------------------------------------------

TypesPage::TypesPage(QWidget* parent)
    : SetupPage(parent), m_types(new QButtonGroup(this)), m_log_x(new QCheckBox(tr("Logarithmic &X axis"), this)),
      m_log_y(new QCheckBox(tr("Logarithmic &Y axis"), this)), m_grid(new QCheckBox(tr("&Grid lines"), this)) {
    auto* grid = new QGridLayout(this);
    int n = 0;
    for (const graph::GraphTypeInfo& info : graph::graph_types()) {
        auto* button = new QRadioButton(QString::fromLatin1(info.caption), this);
        m_types->addButton(button, info.type);
        grid->addWidget(button, n / 3, n % 3);
        ++n;
    }
    const int row = (n + 2) / 3;
    grid->addWidget(m_log_x, row, 0);
    grid->addWidget(m_log_y, row, 1);
    grid->addWidget(m_grid, row, 2);

    // A surface's forms: any mix of the six, drawn as a surface or as bars.
    auto* three_d = new QGroupBox(tr("3-D graph (an X and a Z axis variable)"), this);
    auto* forms = new QGridLayout(three_d);
    for (int position = graph::type3d::Mesh; position <= graph::type3d::Project; ++position) {
        auto* flag = new QCheckBox(QString::fromLatin1(graph::type3d_flag_name(position)), three_d);
        m_flags_3d.push_back(flag);
        forms->addWidget(flag, (position - 1) / 3, (position - 1) % 3);
    }
    m_form_3d = new QButtonGroup(this);
    for (int form = 0; form <= 1; ++form) {
        auto* button = new QRadioButton(QString::fromLatin1(graph::type3d_form_caption(form)), three_d);
        m_form_3d->addButton(button, form);
        forms->addWidget(button, 2, form);
    }
    grid->addWidget(three_d, row + 1, 0, 1, 3);
    grid->setRowStretch(row + 2, 1);
}

void TypesPage::load(const document::DocumentGraph& graph) {
    if (QAbstractButton* button = m_types->button(graph.Data.Type)) button->setChecked(true);
    m_log_x->setChecked(graph.Data.XAxisLogarithmic != 0);
    m_log_y->setChecked(graph.Data.YAxisLogarithmic != 0);
    m_grid->setChecked(graph.Data.ShowGridLines != 0);
    for (size_t k = 0; k < m_flags_3d.size(); ++k)
        m_flags_3d[k]->setChecked(graph.Data.Get3DTypeBit(static_cast<int>(k) + 1) != 0);
    if (QAbstractButton* form = m_form_3d->button(graph.Data.Get3DTypeBit(graph::type3d::Surface) != 0 ? 1 : 0))
        form->setChecked(true);
}

void TypesPage::store(document::DocumentGraph& graph) {
    if (m_types->checkedId() > 0) graph.Data.Type = m_types->checkedId();
    graph.Data.XAxisLogarithmic = m_log_x->isChecked();
    graph.Data.YAxisLogarithmic = m_log_y->isChecked();
    graph.Data.ShowGridLines = m_grid->isChecked();
    for (size_t k = 0; k < m_flags_3d.size(); ++k)
        graph.Data.Set3DTypeBit(static_cast<int>(k) + 1, m_flags_3d[k]->isChecked() ? 1 : 0);
    graph.Data.Set3DTypeBit(graph::type3d::Surface, m_form_3d->checkedId() == 1 ? 1 : 0);
}

// --- Styles ---------------------------------------------------------------------------------

StylesPage::StylesPage(store::IniFile* settings, QWidget* parent)
    : SetupPage(parent), m_settings(settings), m_table(new QTableWidget(this)) {
    m_table->setColumnCount(3);
    m_table->setHorizontalHeaderLabels({tr("Series"), tr("Line Width"), tr("Colour")});
    m_table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    m_table->verticalHeader()->hide();
    m_width_for_all = new QSpinBox(this);
    m_width_for_all->setRange(1, 10);
    auto* apply_all = new QPushButton(tr("Apply &To All"), this);
    auto* all_label = new QLabel(tr("Line &width of every series:"), this);
    all_label->setBuddy(m_width_for_all);
    auto* all_row = new QHBoxLayout;
    all_row->addWidget(all_label);
    all_row->addWidget(m_width_for_all);
    all_row->addWidget(apply_all);
    all_row->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(tr("2D Graph Line Styles"), this));
    layout->addWidget(m_table);
    layout->addLayout(all_row);
    connect(apply_all, &QPushButton::clicked, this, &StylesPage::apply_to_all);
}

void StylesPage::apply_to_all() {
    for (int row = 0; row < m_table->rowCount(); ++row)
        if (auto* spin = qobject_cast<QSpinBox*>(m_table->cellWidget(row, 1))) spin->setValue(m_width_for_all->value());
    m_applied_to_all = true;
}

void StylesPage::load(const document::DocumentGraph& graph) {
    const size_t functions = graph.Data.Functions.size();
    m_applied_to_all = graph.Data.ApplyAllLineWidths;
    m_table->setRowCount(0); // the widgets of the last load go
    m_table->setRowCount(static_cast<int>(functions + graph.Data.DataSets.size()));
    int row = 0;
    const auto add_row = [&](const std::string& name, int width, store::TColor color) {
        m_table->setItem(row, 0, new QTableWidgetItem(text_of(name)));
        m_table->item(row, 0)->setFlags(Qt::ItemIsEnabled);
        auto* spin = new QSpinBox(m_table);
        spin->setRange(1, 10);
        spin->setValue(width);
        m_table->setCellWidget(row, 1, spin);
        auto* button = new ColorButton(color, m_settings, m_table);
        button->setToolTip(tr("Colour of %1").arg(text_of(name)));
        m_table->setCellWidget(row, 2, button);
        ++row;
    };
    for (size_t f = 0; f < functions; ++f) {
        const document::FunctionStyle& style = graph.StyleOf(f);
        add_row(graph.Data.Functions[f].full_name(), style.LineWidth,
                style.LineColor.value_or(graph::default_series_color(static_cast<int>(functions - 1 - f))));
    }
    int n = static_cast<int>(functions);
    for (const graph::StrDataPnts& set : graph.Data.DataSets)
        add_row(set.Name, set.LineWidth, set.HasLineColor ? set.LineColor : graph::default_series_color(n++));
}

void StylesPage::store(document::DocumentGraph& graph) {
    graph.Data.ApplyAllLineWidths = m_applied_to_all;
    const size_t functions = graph.Data.Functions.size();
    graph.FunctionStyles.resize(functions);
    int row = 0;
    for (size_t f = 0; f < functions && row < m_table->rowCount(); ++f, ++row) {
        graph.FunctionStyles[f].LineWidth = qobject_cast<QSpinBox*>(m_table->cellWidget(row, 1))->value();
        graph.FunctionStyles[f].LineColor = qobject_cast<ColorButton*>(m_table->cellWidget(row, 2))->color();
    }
    for (graph::StrDataPnts& set : graph.Data.DataSets) {
        if (row >= m_table->rowCount()) break;
        set.LineWidth = qobject_cast<QSpinBox*>(m_table->cellWidget(row, 1))->value();
        set.LineColor = qobject_cast<ColorButton*>(m_table->cellWidget(row, 2))->color();
        set.HasLineColor = true;
        ++row;
    }
}

// --- Colors ---------------------------------------------------------------------------------

ColorsPage::ColorsPage(const Services& services, QWidget* parent) : SetupPage(parent), m_services(services) {
    store::IniFile* settings = services.settings;
    auto* grid = new QGridLayout(this);
    int n = 0;
    for (const graph::GraphColorEntry& entry : graph::graph_colors()) {
        // "DataAreaBackground" reads "Data Area Background".
        QString name = QString::fromLatin1(entry.ini_key);
        for (int i = name.size() - 1; i > 0; --i)
            if (name.at(i).isUpper()) name.insert(i, QLatin1Char(' '));
        auto* button = new ColorButton(entry.initial, settings, this);
        button->setToolTip(name);
        auto* label = new QLabel(name, this);
        label->setBuddy(button);
        grid->addWidget(label, n / 2, (n % 2) * 2);
        grid->addWidget(button, n / 2, (n % 2) * 2 + 1);
        m_buttons.push_back(button);
        ++n;
    }
    auto* save = new QPushButton(tr("&Save As Defaults"), this);
    auto* restore = new QPushButton(tr("&Load Defaults"), this);
    save->setToolTip(tr("These colours become those of every new graph."));
    restore->setToolTip(tr("The colours you saved as defaults replace those shown."));
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(save);
    row->addWidget(restore);
    grid->setRowStretch((n + 1) / 2, 1);
    grid->addLayout(row, (n + 1) / 2 + 1, 0, 1, 4);
    connect(save, &QPushButton::clicked, this, &ColorsPage::save_defaults);
    connect(restore, &QPushButton::clicked, this, &ColorsPage::load_defaults);
}

bool ColorsPage::save_defaults() {
    if (!m_services.settings ||
        ask("Do you want to save these colors as your default graph colors, the colors of every new graph?") !=
            QMessageBox::Yes)
        return false;
    document::DocumentGraph shown;
    store(shown);
    if (!shown.Data.SaveDefaultColors(*m_services.settings) || !m_services.settings->Save()) {
        tell("The default graph colors could not be saved.");
        return false;
    }
    return true;
}

bool ColorsPage::load_defaults() {
    if (!m_services.settings ||
        ask("Do you want to load your default graph colors? They replace the colors shown.") != QMessageBox::Yes)
        return false;
    document::DocumentGraph defaults;
    defaults.Data.SetDefaultColors(*m_services.settings);
    load(defaults);
    return true;
}

void ColorsPage::load(const document::DocumentGraph& graph) {
    size_t n = 0;
    for (const graph::GraphColorEntry& entry : graph::graph_colors()) m_buttons[n++]->set_color(graph.Data.*entry.member);
}

void ColorsPage::store(document::DocumentGraph& graph) {
    size_t n = 0;
    for (const graph::GraphColorEntry& entry : graph::graph_colors()) graph.Data.*entry.member = m_buttons[n++]->color();
}

} // namespace quorvex::gui
