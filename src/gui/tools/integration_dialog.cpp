#include "integration_dialog.h"

#include "gui/common/progress_host.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"

#include "engine/parser.h"
#include "engine/variable.h"
#include "store/ini_file.h"

#include <QApplication>
#include <QButtonGroup>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QStyle>
#include <QVBoxLayout>

#include <sstream>

namespace quorvex::gui {

namespace {

const QString k_caption = QStringLiteral("Integration Utility");
const char* const k_precision_key = "IntegrationPrecision";

QString text_of(const std::string& text) {
    return QString::fromStdString(text);
}

// The gauge of a run: the share done as the outer integral's points come in, redrawn only when
// the percent changes (each redraw of a modal progress dialog handles the events once more).
class IntegrationProgress : public ProgressHost {
public:
    using ProgressHost::ProgressHost;
    void progress(long done, long /*total*/) override {
        const int percent = desktop::integration_percent(done);
        if (percent == m_shown) return;
        m_shown = percent;
        set_progress(QStringLiteral("%1% Done").arg(percent).toStdString(), percent);
    }

private:
    int m_shown = -1;
};

} // namespace

IntegrationDialog::IntegrationDialog(DocumentWindow& document, QWidget* parent)
    : ToolDialog(document, k_caption, parent), m_document(document),
      m_expression(new QComboBox(this)), m_orders{new QRadioButton(tr("&Single"), this),
                                                  new QRadioButton(tr("&Double"), this),
                                                  new QRadioButton(tr("&Triple"), this)},
      m_order_group(new QButtonGroup(this)), m_parameters{new QComboBox(this), new QComboBox(this),
                                                          new QComboBox(this)},
      m_lowers{new QLineEdit(this), new QLineEdit(this), new QLineEdit(this)}, m_uppers{new QLineEdit(this),
                                                                                        new QLineEdit(this),
                                                                                        new QLineEdit(this)},
      m_parameter_labels{new QLabel(tr("&X Parameter"), this), new QLabel(tr("&Y Parameter"), this),
                         new QLabel(tr("&Z Parameter"), this)},
      m_accuracy(new QSlider(Qt::Horizontal, this)), m_precision(new QSpinBox(this)),
      m_answer(new QLineEdit(this)), m_warning(new QLabel(this)), m_inputs(new QWidget(this)) {
    setObjectName(QStringLiteral("integrationDialog"));
    m_expression->setEditable(true);
    m_expression->setInsertPolicy(QComboBox::NoInsert);
    m_expression->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_expression->setMinimumContentsLength(24);
    m_expression->lineEdit()->setPlaceholderText(
        tr("a function of the document or an expression (empty: 1)"));

    // What is integrated, and how many times.
    auto* what = new QFormLayout;
    auto* expression_label = new QLabel(tr("E&xpression:"), this);
    expression_label->setBuddy(m_expression);
    what->addRow(expression_label, m_expression);
    auto* orders = new QHBoxLayout;
    for (int n = 0; n < 3; ++n) {
        m_order_group->addButton(m_orders[static_cast<size_t>(n)], n + 1);
        orders->addWidget(m_orders[static_cast<size_t>(n)]);
    }
    orders->addStretch(1);
    what->addRow(tr("Order:"), orders);

    // One row per integral, the innermost (X) first.
    auto* limits = new QGroupBox(tr("Parameters and limits"), this);
    auto* grid = new QGridLayout(limits);
    auto* lower_heading = new QLabel(tr("&Lower limit"), this);
    auto* upper_heading = new QLabel(tr("&Upper limit"), this);
    lower_heading->setBuddy(m_lowers[0]);
    upper_heading->setBuddy(m_uppers[0]);
    grid->addWidget(lower_heading, 0, 2);
    grid->addWidget(upper_heading, 0, 3);
    const char* const names[] = {"x", "y", "z"};
    const QString axis_names[] = {QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("Z")};
    for (int axis = 0; axis < 3; ++axis) {
        const auto a = static_cast<size_t>(axis);
        QComboBox* parameter = m_parameters[a];
        parameter->setEditable(true);
        parameter->setInsertPolicy(QComboBox::NoInsert);
        parameter->addItems({QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("z")});
        parameter->setObjectName(QStringLiteral("%1Parameter").arg(QLatin1String(names[axis])));
        parameter->setMinimumContentsLength(6);
        m_parameter_labels[a]->setBuddy(parameter);
        m_lowers[a]->setAccessibleName(tr("Lower limit of the %1 parameter").arg(axis_names[axis]));
        m_uppers[a]->setAccessibleName(tr("Upper limit of the %1 parameter").arg(axis_names[axis]));
        grid->addWidget(m_parameter_labels[a], axis + 1, 0);
        grid->addWidget(parameter, axis + 1, 1);
        grid->addWidget(m_lowers[a], axis + 1, 2);
        grid->addWidget(m_uppers[a], axis + 1, 3);
    }
    auto* note =
        new QLabel(tr("The limits of an inner integral may use the variables of the outer ones."), this);
    note->setWordWrap(true);
    note->setForegroundRole(QPalette::PlaceholderText);
    grid->addWidget(note, 4, 0, 1, 4);
    grid->setColumnStretch(2, 1);
    grid->setColumnStretch(3, 1);

    // Speed against accuracy: 0.01 at the left end, a tenth of that for every ten steps.
    m_accuracy->setRange(0, 100);
    m_accuracy->setPageStep(10);
    m_accuracy->setTickInterval(10);
    m_accuracy->setTickPosition(QSlider::TicksBelow);
    m_accuracy->setAccessibleName(tr("Speed or accuracy"));
    auto* speed = new QLabel(tr("S&peed"), this);
    auto* accurate = new QLabel(tr("&Accuracy"), this);
    speed->setBuddy(m_accuracy);
    accurate->setBuddy(m_accuracy);
    auto* slider = new QHBoxLayout;
    slider->addWidget(speed);
    slider->addWidget(m_accuracy, 1);
    slider->addWidget(accurate);

    auto* inputs = new QVBoxLayout(m_inputs);
    inputs->setContentsMargins(0, 0, 0, 0);
    inputs->addLayout(what);
    inputs->addWidget(limits);
    inputs->addLayout(slider);

    // The answer.
    m_precision->setRange(1, 14);
    m_precision->setValue(
        m_document.services().settings
            ? std::clamp(m_document.services().settings->GetInt("OPTIONS", k_precision_key, 6), 1, 14)
            : 6);
    m_answer->setReadOnly(true);
    m_answer->setObjectName(QStringLiteral("answer"));
    m_warning->setWordWrap(true);
    m_warning->hide();
    auto* result = new QFormLayout;
    auto* precision_label = new QLabel(tr("P&recision"), this);
    precision_label->setBuddy(m_precision);
    auto* precision_row = new QHBoxLayout;
    precision_row->addWidget(m_precision);
    precision_row->addStretch(1);
    result->addRow(precision_label, precision_row);
    auto* answer_label = new QLabel(tr("A&nswer : "), this);
    answer_label->setBuddy(m_answer);
    result->addRow(answer_label, m_answer);
    result->addRow(QString(), m_warning);

    auto* integrate_button = new QPushButton(tr("&Integrate"), this);
    integrate_button->setDefault(true);
    auto* copy_button = new QPushButton(tr("&Copy answer"), this);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->addButton(integrate_button, QDialogButtonBox::ActionRole);
    buttons->addButton(copy_button, QDialogButtonBox::ActionRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_inputs);
    layout->addLayout(result);
    layout->addStretch(1);
    layout->addWidget(buttons);

    connect(integrate_button, &QPushButton::clicked, this, [this] { integrate(); });
    connect(copy_button, &QPushButton::clicked, this, [this] { copy_answer(); });
    connect(m_precision, &QSpinBox::valueChanged, this, [this](int digits) {
        show_answer();
        store_inputs();
        if (store::IniFile* settings = m_document.services().settings) {
            settings->WriteString("OPTIONS", k_precision_key, std::to_string(digits));
            settings->Save();
        }
    });
    connect(m_order_group, &QButtonGroup::idToggled, this, [this](int, bool on) {
        if (!on) return;
        show_order();
        input_edited();
    });
    connect(m_expression, &QComboBox::currentTextChanged, this, [this] { input_edited(); });
    for (int axis = 0; axis < 3; ++axis) {
        const auto a = static_cast<size_t>(axis);
        connect(m_parameters[a], &QComboBox::currentTextChanged, this, [this] { input_edited(); });
        connect(m_lowers[a], &QLineEdit::textChanged, this, [this] { input_edited(); });
        connect(m_uppers[a], &QLineEdit::textChanged, this, [this] { input_edited(); });
    }
    connect(m_accuracy, &QSlider::valueChanged, this, [this] { input_edited(); });

    refresh_functions();
    load_inputs();
}

IntegrationDialog::~IntegrationDialog() = default;

int IntegrationDialog::order() const {
    return std::max(1, m_order_group->checkedId());
}

void IntegrationDialog::refresh_functions() {
    offer_functions(m_expression);
}

void IntegrationDialog::load_inputs() {
    m_loading = true;
    const document::IntegrationParameters& kept = m_document.document().Tools.Integration;
    m_expression->setEditText(text_of(kept.IntFunc));
    m_orders[static_cast<size_t>(std::clamp(kept.IntType, 1, 3) - 1)]->setChecked(true);
    const std::string* parameters[] = {&kept.IntXParam, &kept.IntYParam, &kept.IntZParam};
    const std::string* lowers[] = {&kept.IntXLoLimit, &kept.IntYLoLimit, &kept.IntZLoLimit};
    const std::string* uppers[] = {&kept.IntXHiLimit, &kept.IntYHiLimit, &kept.IntZHiLimit};
    for (size_t a = 0; a < 3; ++a) {
        if (!parameters[a]->empty())
            m_parameters[a]->setEditText(text_of(*parameters[a]));
        else
            m_parameters[a]->setCurrentIndex(static_cast<int>(a)); // x, y and z
        m_lowers[a]->setText(text_of(*lowers[a]));
        m_uppers[a]->setText(text_of(*uppers[a]));
    }
    m_accuracy->setValue(std::clamp(kept.IntAccuracy, 0, 100));
    m_loading = false;
    show_order();
}

void IntegrationDialog::store_inputs() {
    document::IntegrationParameters& kept = m_document.document().Tools.Integration;
    const document::IntegrationParameters before = kept;
    kept.IntType = order();
    kept.IntPrecision = m_precision->value();
    kept.IntAccuracy = m_accuracy->value();
    kept.IntFunc = m_expression->currentText().toStdString();
    std::string* parameters[] = {&kept.IntXParam, &kept.IntYParam, &kept.IntZParam};
    std::string* lowers[] = {&kept.IntXLoLimit, &kept.IntYLoLimit, &kept.IntZLoLimit};
    std::string* uppers[] = {&kept.IntXHiLimit, &kept.IntYHiLimit, &kept.IntZHiLimit};
    for (size_t a = 0; a < 3; ++a) {
        *parameters[a] = m_parameters[a]->currentText().toStdString();
        *lowers[a] = m_lowers[a]->text().toStdString();
        *uppers[a] = m_uppers[a]->text().toStdString();
    }
    if (!(kept == before)) m_document.parser().set_vars_saved(false); // the document changed
}

void IntegrationDialog::input_edited() {
    if (m_loading) return;
    // An answer belongs to the inputs it was computed from.
    m_result.reset();
    show_answer();
    store_inputs();
}

void IntegrationDialog::show_order() {
    const int levels = order();
    for (int axis = 0; axis < 3; ++axis) {
        const bool used = axis < levels;
        const auto a = static_cast<size_t>(axis);
        for (QWidget* widget :
             {static_cast<QWidget*>(m_parameter_labels[a]), static_cast<QWidget*>(m_parameters[a]),
              static_cast<QWidget*>(m_lowers[a]), static_cast<QWidget*>(m_uppers[a])})
            widget->setEnabled(used);
    }
}

void IntegrationDialog::show_answer() {
    if (!m_result || m_result->stopped) {
        m_answer->clear();
        m_warning->hide();
        return;
    }
    std::ostringstream out;
    engine::Variable::StreamVariable({m_result->value, 0}, out, m_precision->value());
    m_answer->setText(text_of(out.str()));
    if (m_result->converged) {
        m_warning->hide();
    } else {
        m_warning->setText(tr("%1 The answer is the best estimate reached.")
                               .arg(text_of(desktop::integration_not_converged_text())));
        m_warning->show();
    }
}

void IntegrationDialog::take_function(const QString& function) {
    m_expression->setEditText(function);
    m_parameters[0]->setFocus();
}

QWidget* IntegrationDialog::field_of(const desktop::IntegrationFailure& failure) const {
    const auto a = static_cast<size_t>(std::clamp(failure.axis, 0, 2));
    switch (failure.field) {
    case desktop::IntegrationField::parameter:
        return m_parameters[a];
    case desktop::IntegrationField::lower:
        return m_lowers[a];
    case desktop::IntegrationField::upper:
        return m_uppers[a];
    case desktop::IntegrationField::expression:
        break;
    }
    return m_expression;
}

bool IntegrationDialog::integrate() {
    if (m_busy) return false; // a second press while a run goes
    store_inputs();
    m_result.reset();
    show_answer();
    desktop::IntegrationInput input;
    input.order = order();
    input.expression = m_expression->currentText().toStdString();
    for (size_t a = 0; a < 3; ++a)
        input.axes[a] = {m_parameters[a]->currentText().toStdString(), m_lowers[a]->text().toStdString(),
                         m_uppers[a]->text().toStdString()};
    input.accuracy_position = m_accuracy->value();

    m_busy = true;
    // The inputs stay as they are while the run uses them.
    m_inputs->setEnabled(false);
    desktop::IntegrationFailure failure;
    std::optional<desktop::IntegrationAnswer> answer;
    {
        IntegrationProgress host(this, k_caption);
        host.set_progress("0% Done", 0);
        answer = desktop::integrate_expression(m_document.parser(), input, &host, failure);
    }
    m_inputs->setEnabled(true);
    m_busy = false;
    Q_EMIT m_document.variablesChanged(); // a variable made for the run is gone again
    SoundPlayer* sounds = m_document.services().sounds;
    if (!answer) {
        tell(text_of(failure.message));
        if (QWidget* field = field_of(failure)) {
            field->setFocus();
            if (auto* edit = qobject_cast<QLineEdit*>(field)) edit->selectAll();
        }
        return false;
    }
    if (answer->stopped) {
        if (sounds) sounds->play(QStringLiteral("Delete.wav"));
        return false;
    }
    m_result = answer;
    show_answer();
    if (sounds) sounds->play(QStringLiteral("QClick.wav"));
    return true;
}

void IntegrationDialog::copy_answer() {
    if (!m_answer->text().isEmpty()) QApplication::clipboard()->setText(m_answer->text());
}

} // namespace quorvex::gui
