#include "quick_graph_dialog.h"

#include "gui/common/message_reporter.h"
#include "gui/common/progress_host.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"
#include "gui/graph2d/graph_window.h"
#include "gui/graph2d/simulation_player.h"

#include "engine/parser.h"
#include "graph/graph_types.h"
#include "graph/setup_checks.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace quorvex::gui {

namespace {

const QString k_caption = QStringLiteral("Quick Graph Utility");
// The 2-D types the page offers, in its order.
constexpr int k_types[] = {1, 14, 2, 4, 5, 6, 7, 8, 9, 10, 11, 13};

QString text_of(const std::string& text) { return QString::fromStdString(text); }
std::string text_of(const QString& text) { return text.toStdString(); }

QComboBox* editable_combo(QWidget* parent) {
    auto* combo = new QComboBox(parent);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(6);
    return combo;
}

desktop::ToolRange first_range(const QuickGraphFields& fields) {
    return {text_of(fields.variable->currentText()), text_of(fields.start->text()), text_of(fields.end->text()),
            text_of(fields.points->text())};
}
desktop::ToolRange second_range(const QuickGraphFields& fields) {
    return {text_of(fields.variable2->currentText()), text_of(fields.start2->text()), text_of(fields.end2->text()),
            text_of(fields.points2->text())};
}

} // namespace

QuickGraphDialog::QuickGraphDialog(DocumentWindow& document, QWidget* parent)
    : ToolDialog(document, k_caption, parent),
      m_document(document),
      m_pages(new QTabWidget(this)),
      m_type(new QComboBox(this)),
      m_errors(new QListWidget(this)) {
    setObjectName(QStringLiteral("quickGraphDialog"));
    for (const int type : k_types) m_type->addItem(QString::fromUtf8(graph::graph_type_caption(type)), type);

    QWidget* page_2d = make_page(m_2d, false);
    auto* type_row = new QFormLayout;
    type_row->addRow(tr("Graph &type:"), m_type);
    auto* draw_2d = new QPushButton(tr("&Graph"), page_2d);
    m_simulate = new QPushButton(tr("&Simulate"), page_2d);
    m_slower = new QPushButton(tr("S&lower"), page_2d);
    m_faster = new QPushButton(tr("&Faster"), page_2d);
    m_simulate->setToolTip(tr("Plays the family of curves in the graph window, one curve after another"));
    auto* buttons_2d = new QHBoxLayout;
    for (QPushButton* button : {draw_2d, m_simulate, m_slower, m_faster}) buttons_2d->addWidget(button);
    buttons_2d->addStretch(1);
    auto* layout_2d = static_cast<QVBoxLayout*>(page_2d->layout());
    layout_2d->addLayout(type_row);
    layout_2d->addLayout(buttons_2d);
    layout_2d->addStretch(1);

    QWidget* page_3d = make_page(m_3d, true);
    m_mesh = new QCheckBox(tr("&Mesh"), page_3d);
    m_shade = new QCheckBox(tr("S&hade"), page_3d);
    m_contour = new QCheckBox(tr("&Contour"), page_3d);
    m_zone = new QCheckBox(tr("&Zone"), page_3d);
    auto* flags = new QHBoxLayout;
    flags->addWidget(new QLabel(tr("Draw as:"), page_3d));
    for (QCheckBox* box : {m_mesh, m_shade, m_contour, m_zone}) flags->addWidget(box);
    flags->addStretch(1);
    auto* draw_3d = new QPushButton(tr("&Graph Surface"), page_3d);
    auto* buttons_3d = new QHBoxLayout;
    buttons_3d->addWidget(draw_3d);
    buttons_3d->addStretch(1);
    auto* layout_3d = static_cast<QVBoxLayout*>(page_3d->layout());
    layout_3d->addLayout(flags);
    layout_3d->addLayout(buttons_3d);
    layout_3d->addStretch(1);

    m_pages->addTab(page_2d, tr("&2-D Graph"));
    m_pages->addTab(page_3d, tr("&3-D Graph"));
    auto* errors_label = new QLabel(tr("&Errors:"), this);
    errors_label->setBuddy(m_errors);
    m_errors->setMinimumHeight(fontMetrics().height() * 4);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pages);
    layout->addWidget(errors_label);
    layout->addWidget(m_errors, 1);
    layout->addWidget(close);

    connect(draw_2d, &QPushButton::clicked, this, [this] { graph_2d(); });
    connect(draw_3d, &QPushButton::clicked, this, [this] { graph_3d(); });
    connect(m_simulate, &QPushButton::clicked, this, [this] { toggle_simulation(); });
    connect(m_slower, &QPushButton::clicked, this, &QuickGraphDialog::slower);
    connect(m_faster, &QPushButton::clicked, this, &QuickGraphDialog::faster);
    connect(&m_document.graph_window()->simulation(), &SimulationPlayer::runningChanged, this,
            [this] { update_simulation_buttons(); });
    refresh_functions();
    load_inputs();
    update_simulation_buttons();
    resize(540, 380);
}

QuickGraphDialog::~QuickGraphDialog() = default;

QWidget* QuickGraphDialog::make_page(QuickGraphFields& fields, bool surface) {
    auto* page = new QWidget(this);
    fields.function = editable_combo(page);
    fields.function->setMinimumContentsLength(24);
    fields.function->lineEdit()->setPlaceholderText(tr("a function of the document or an expression"));
    fields.variable = editable_combo(page);
    fields.variable2 = editable_combo(page);
    for (QLineEdit** edit : {&fields.start, &fields.end, &fields.points, &fields.start2, &fields.end2, &fields.points2}) {
        *edit = new QLineEdit(page);
        (*edit)->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("-2*PI+1")) + 12);
    }
    auto* function_row = new QFormLayout;
    function_row->addRow(tr("F&unction:"), fields.function);
    auto* grid = new QGridLayout;
    const QStringList headings = {tr("Variable"), tr("Start value"), tr("End value"), tr("Points")};
    for (int c = 0; c < headings.size(); ++c) grid->addWidget(new QLabel(headings[c], page), 0, c + 1);
    auto* first = new QLabel(tr("&X axis:"), page);
    first->setBuddy(fields.variable);
    auto* second = new QLabel(surface ? tr("&Z axis:") : tr("&Family over:"), page);
    second->setBuddy(fields.variable2);
    if (!surface)
        second->setToolTip(tr("Optional: a second variable, one curve for each of its values, played as a simulation"));
    grid->addWidget(first, 1, 0);
    grid->addWidget(second, 2, 0);
    const QWidget* row1[] = {fields.variable, fields.start, fields.end, fields.points};
    const QWidget* row2[] = {fields.variable2, fields.start2, fields.end2, fields.points2};
    for (int c = 0; c < 4; ++c) {
        grid->addWidget(const_cast<QWidget*>(row1[c]), 1, c + 1);
        grid->addWidget(const_cast<QWidget*>(row2[c]), 2, c + 1);
    }
    auto* layout = new QVBoxLayout(page);
    layout->addLayout(function_row);
    layout->addLayout(grid);
    connect(fields.function, &QComboBox::currentTextChanged, this, [this, &fields] { fill_variables(fields); });
    return page;
}

void QuickGraphDialog::fill_variables(QuickGraphFields& fields) {
    // A function's own variables are the usual choice, the first along X.
    engine::Parser& parser = m_document.parser();
    const std::string call = desktop::runnable_expression(parser, text_of(fields.function->currentText()));
    const int index = parser.find_function(call.c_str());
    if (index < 0) return;
    const engine::Function* function = parser.function_at(index);
    for (QComboBox* combo : {fields.variable, fields.variable2}) {
        const QString kept = combo->currentText();
        combo->clear();
        for (int n = 1; n <= function->num_variables(); ++n) combo->addItem(text_of(function->GetFuncVariable(n)));
        combo->setEditText(kept);
    }
    fields.variable->setEditText(text_of(function->GetFuncVariable(1)));
    fields.variable2->setEditText(function->num_variables() > 1 ? text_of(function->GetFuncVariable(2)) : QString());
}

bool QuickGraphDialog::busy() const {
    return m_busy || m_document.graph_window()->simulation().running();
}

QString QuickGraphDialog::busy_message() const {
    return m_busy ? tr("A graph is being computed in the Quick Graph Utility: stop it before closing the document.")
                  : tr("A simulation is running: stop it before closing the document.");
}

void QuickGraphDialog::refresh_functions() {
    offer_functions(m_2d.function);
    offer_functions(m_3d.function);
}

void QuickGraphDialog::take_function(const QString& function) {
    // A function of two variables is a surface or a family; of one, a curve.
    const std::string call = desktop::runnable_expression(m_document.parser(), text_of(function));
    const int index = m_document.parser().find_function(call.c_str());
    const bool two = index >= 0 && m_document.parser().function_at(index)->num_variables() >= 2;
    QuickGraphFields& fields = two && m_pages->currentIndex() == 1 ? m_3d : m_2d;
    fields.function->setEditText(function);
    fields.start->setFocus();
}

void QuickGraphDialog::load_inputs() {
    const document::QuickGraphParameters& kept = m_document.document().Tools.QuickGraph;
    const auto load = [](QuickGraphFields& fields, const document::QuickGraphFunction& saved) {
        fields.function->setEditText(text_of(saved.Func));
        fields.variable->setEditText(saved.Var.empty() ? QStringLiteral("x") : text_of(saved.Var));
        fields.start->setText(saved.Xo.empty() ? QStringLiteral("-10") : text_of(saved.Xo));
        fields.end->setText(saved.Xn.empty() ? QStringLiteral("10") : text_of(saved.Xn));
        fields.points->setText(saved.In.empty() ? QStringLiteral("201") : text_of(saved.In));
        fields.variable2->setEditText(text_of(saved.Var2));
        fields.start2->setText(text_of(saved.Xo2));
        fields.end2->setText(text_of(saved.Xn2));
        fields.points2->setText(text_of(saved.In2));
    };
    load(m_2d, kept.Graph2D);
    load(m_3d, kept.Graph3D);
    if (kept.Graph3D.Var2.empty()) {
        m_3d.variable2->setEditText(QStringLiteral("y"));
        m_3d.start2->setText(QStringLiteral("-10"));
        m_3d.end2->setText(QStringLiteral("10"));
        m_3d.points2->setText(QStringLiteral("31"));
        if (kept.Graph3D.In.empty()) m_3d.points->setText(QStringLiteral("31"));
    }
    m_type->setCurrentIndex(std::max(0, m_type->findData(kept.QuickGraph2DGraphType)));
    unsigned long type3d = graph::k_default_type3d;
    if (!kept.QuickGraph3DGraphType.empty()) type3d = std::strtoul(kept.QuickGraph3DGraphType.c_str(), nullptr, 10);
    m_mesh->setChecked(graph::Get3DTypeBit(type3d, graph::type3d::Mesh) != 0);
    m_shade->setChecked(graph::Get3DTypeBit(type3d, graph::type3d::Shade) != 0);
    m_contour->setChecked(graph::Get3DTypeBit(type3d, graph::type3d::Contour) != 0);
    m_zone->setChecked(graph::Get3DTypeBit(type3d, graph::type3d::Zone) != 0);
}

void QuickGraphDialog::store_inputs() {
    document::QuickGraphParameters& kept = m_document.document().Tools.QuickGraph;
    const document::QuickGraphParameters before = kept;
    const auto store = [](const QuickGraphFields& fields, document::QuickGraphFunction& saved) {
        saved = {text_of(fields.function->currentText()), text_of(fields.variable->currentText()),
                 text_of(fields.start->text()),            text_of(fields.end->text()),
                 text_of(fields.points->text()),           text_of(fields.variable2->currentText()),
                 text_of(fields.start2->text()),           text_of(fields.end2->text()),
                 text_of(fields.points2->text())};
    };
    store(m_2d, kept.Graph2D);
    store(m_3d, kept.Graph3D);
    kept.QuickGraph2DGraphType = m_type->currentData().toInt();
    unsigned long type3d = graph::k_default_type3d;
    graph::Set3DTypeBit(type3d, graph::type3d::Mesh, m_mesh->isChecked());
    graph::Set3DTypeBit(type3d, graph::type3d::Shade, m_shade->isChecked());
    graph::Set3DTypeBit(type3d, graph::type3d::Contour, m_contour->isChecked());
    graph::Set3DTypeBit(type3d, graph::type3d::Zone, m_zone->isChecked());
    kept.QuickGraph3DGraphType = std::to_string(type3d);
    if (!(kept == before)) m_document.parser().set_vars_saved(false); // the document changed
}

std::optional<desktop::QuickGraphFamily> QuickGraphDialog::compute(const QuickGraphFields& fields, bool surface) {
    store_inputs();
    m_errors->clear();
    const Services& services = m_document.services();
    desktop::ToolQuestions questions;
    questions.both_solutions = [this, &services](const std::string& text) {
        return ask_user(services, this, k_caption, text_of(text), QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
    };
    desktop::ToolRange second = second_range(fields);
    if (surface && second.variable.empty()) {
        tell(tr("A surface needs a second variable along the Z axis."));
        return std::nullopt;
    }
    std::string error;
    std::optional<desktop::QuickGraphFamily> family;
    m_busy = true;
    {
        ProgressHost host(this, k_caption);
        host.set_progress("Computing the function values", 0);
        family = desktop::quick_graph_values(m_document.parser(), text_of(fields.function->currentText()),
                                             first_range(fields), second, questions, &host, error);
    }
    m_busy = false;
    Q_EMIT m_document.variablesChanged(); // variables made for the run are gone again
    if (!family) {
        tell(text_of(error));
        return std::nullopt;
    }
    show_errors(*family);
    if (family->stopped) return std::nullopt;
    if (family->large_imaginary_found &&
        ask_user(services, this, k_caption,
                 tr("Some values of %1 are complex numbers whose imaginary parts are larger than the zero threshold; "
                    "they may be round-off. Do you want to graph only the real parts?")
                     .arg(text_of(family->expression)),
                 QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return std::nullopt;
    return family;
}

void QuickGraphDialog::show_errors(const desktop::QuickGraphFamily& family) {
    // A long list of failures says enough in its first lines.
    constexpr size_t k_shown = 500;
    for (size_t i = 0; i < family.errors.size() && i < k_shown; ++i) m_errors->addItem(text_of(family.errors[i]));
    if (family.errors.size() > k_shown)
        m_errors->addItem(tr("... and %1 more points could not be computed.").arg(family.errors.size() - k_shown));
    if (!family.errors.empty() && m_document.services().sounds)
        m_document.services().sounds->play(QStringLiteral("Error.wav"));
}

int QuickGraphDialog::graph_index(const std::string& name) const {
    const auto& graphs = m_document.document().Graphs;
    for (size_t i = 0; i < graphs.size(); ++i)
        if (!name.empty() && graphs[i].Data.Name == name) return static_cast<int>(i);
    return -1;
}

bool QuickGraphDialog::graph_2d() {
    if (m_busy) return false;
    m_document.graph_window()->simulation().stop();
    std::optional<desktop::QuickGraphFamily> family = compute(m_2d, false);
    if (!family) return false;
    auto& graphs = m_document.document().Graphs;
    int index = graph_index(m_graph_2d);
    if (index >= 0 && family->expression != m_expression_2d) {
        const int answer = ask_user(m_document.services(), this, k_caption,
                                    tr("The function has changed. Do you want a new graph of %1? No adds it to "
                                       "the graph \"%2\".")
                                        .arg(text_of(family->expression), text_of(m_graph_2d)),
                                    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        if (answer == QMessageBox::Cancel) return false;
        if (answer == QMessageBox::Yes) index = -1;
    }
    document::DocumentGraph working;
    if (index >= 0) working = graphs[static_cast<size_t>(index)];
    graph::GraphData& data = working.Data;
    if (index < 0) {
        data.Name = desktop::unique_quick_graph_name("Quick 2D Graph: " + family->expression,
                                                     [this](const std::string& name) { return graph_index(name) >= 0; });
        data.DataLayout = 1;
        data.SetUserDefaults(m_document.services().settings);
    }
    desktop::put_family_2d(data, *family);
    desktop::title_quick_graph(data, *family, false);
    data.Type = m_type->currentData().toInt();
    if (const std::optional<graph::SetupProblem> problem = graph::check_graph(data, m_document.parser())) {
        if (!problem->proceed_question) {
            tell(text_of(problem->message));
            return false;
        }
        if (ask_user(m_document.services(), this, k_caption, text_of(problem->message),
                     QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
            return false;
    }
    if (index < 0) {
        graphs.push_back(std::move(working));
        index = static_cast<int>(graphs.size()) - 1;
    } else {
        graphs[static_cast<size_t>(index)] = std::move(working);
    }
    m_graph_2d = graphs[static_cast<size_t>(index)].Data.Name;
    m_expression_2d = family->expression;
    m_document.parser().set_vars_saved(false);
    const bool drawn = m_document.show_graph(index);
    update_simulation_buttons();
    return drawn;
}

bool QuickGraphDialog::graph_3d() {
    if (m_busy) return false;
    m_document.graph_window()->simulation().stop();
    std::optional<desktop::QuickGraphFamily> family = compute(m_3d, true);
    if (!family) return false;
    auto& graphs = m_document.document().Graphs;
    int index = graph_index(m_graph_3d);
    document::DocumentGraph working;
    graph::GraphData& data = working.Data;
    data.SetUserDefaults(m_document.services().settings);
    // The same function updates its surface; another gets a graph of its own.
    if (family->expression != m_expression_3d) index = -1;
    data.Name = index >= 0 ? m_graph_3d
                           : desktop::unique_quick_graph_name("Quick 3D Graph: " + family->expression,
                                                              [this](const std::string& name) { return graph_index(name) >= 0; });
    desktop::put_family_3d(data, *family);
    desktop::title_quick_graph(data, *family, true);
    unsigned long type3d = graph::k_default_type3d;
    graph::Set3DTypeBit(type3d, graph::type3d::Mesh, m_mesh->isChecked());
    graph::Set3DTypeBit(type3d, graph::type3d::Shade, m_shade->isChecked());
    graph::Set3DTypeBit(type3d, graph::type3d::Contour, m_contour->isChecked());
    graph::Set3DTypeBit(type3d, graph::type3d::Zone, m_zone->isChecked());
    data.Type3D = type3d;
    if (index < 0) {
        graphs.push_back(std::move(working));
        index = static_cast<int>(graphs.size()) - 1;
    } else {
        graphs[static_cast<size_t>(index)] = std::move(working);
    }
    m_graph_3d = graphs[static_cast<size_t>(index)].Data.Name;
    m_expression_3d = family->expression;
    m_document.parser().set_vars_saved(false);
    return m_document.show_graph(index);
}

bool QuickGraphDialog::toggle_simulation() {
    GraphWindow* window = m_document.graph_window();
    if (window->simulation().running()) {
        window->stop_simulation();
        return true;
    }
    const int index = graph_index(m_graph_2d);
    const bool family = index >= 0 && m_document.document().Graphs[static_cast<size_t>(index)].Data.DataSets.size() >= 2;
    if (!family) {
        tell(tr("To run a graphic simulation, you must first build a graph with a family of curves."));
        return false;
    }
    // The family is played where it is drawn.
    if (!m_document.graph_shown() || window->current_graph() != index || window->showing_3d())
        if (!m_document.show_graph(index)) return false;
    QString why;
    if (!window->start_simulation(&why)) {
        tell(why);
        return false;
    }
    return true;
}

void QuickGraphDialog::slower() { m_document.graph_window()->simulation().slower(); }
void QuickGraphDialog::faster() { m_document.graph_window()->simulation().faster(); }

void QuickGraphDialog::update_simulation_buttons() {
    const bool running = m_document.graph_window()->simulation().running();
    m_simulate->setText(running ? tr("&Stop Simulation") : tr("&Simulate"));
    m_slower->setEnabled(running);
    m_faster->setEnabled(running);
}

} // namespace quorvex::gui
