#include "options_dialog.h"

#include "engine/parser.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "store/ini_file.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

namespace quorvex::gui {

namespace {

constexpr const char* k_options = "OPTIONS";
constexpr const char* k_parser_options = "PARSER OPTIONS";

} // namespace

OptionsDialog::OptionsDialog(Services& services, engine::Parser* parser, QWidget* parent)
    : QDialog(parent), m_services(services), m_parser(parser) {
    setWindowTitle(tr("Options"));
    setObjectName(QStringLiteral("optionsDialog"));

    auto* program = new QGroupBox(tr("Program"), this);
    m_sound = new QCheckBox(tr("Play &sounds"), program);
    m_sound->setChecked(services.options.Sound);
    m_method = new QComboBox(program);
    m_method->addItems({tr("Shift+Enter computes a line"), tr("Enter computes a line"),
                        tr("Enter or '=' computes a line (assign with :=)")});
    m_method->setCurrentIndex(services.options.CalculationMethod);
    m_incremental = new QCheckBox(tr("Allow &incremental (ranged) variables"), program);
    m_incremental->setChecked(services.options.IncrementalVariables);
    m_square = new QCheckBox(tr("Function calls in s&quare brackets"), program);
    m_square->setChecked(services.options.UseSquareFunctionBrackets);
    m_recalc = new QCheckBox(tr("Recalculate &dependent lines automatically"), program);
    m_recalc->setObjectName(QStringLiteral("recalcDependentLines"));
    m_recalc->setChecked(services.options.RecalcDependentLines);
    m_precise = new QCheckBox(tr("&Precise arithmetic (about 34 digits between steps)"), program);
    m_precise->setObjectName(QStringLiteral("preciseArithmetic"));
    m_precise->setToolTip(tr("Values carry about 34 significant digits from step to step, so each answer shown is "
                             "the true value correctly rounded to the digits shown. Calculations are slower.\n"
                             "Off (the default), every step is rounded through 15 digits.\n"
                             "Applies to every open document at once, except one switched on its own in "
                             "Compute > Precise Arithmetic."));
    m_precise->setChecked(services.options.PreciseArithmetic);
    auto* program_form = new QFormLayout(program);
    program_form->addRow(tr("&Calculation:"), m_method);
    program_form->addRow(m_sound);
    program_form->addRow(m_incremental);
    program_form->addRow(m_square);
    program_form->addRow(m_recalc);
    program_form->addRow(m_precise);
    auto* note = new QLabel(tr("Incremental variables and square brackets apply to documents opened from now on."),
                            program);
    note->setWordWrap(true);
    note->setEnabled(false);
    program_form->addRow(note);

    auto* numbers = new QGroupBox(parser ? tr("Numbers of this document") : tr("Numbers of new documents"), this);
    auto* grid = new QGridLayout(numbers);
    grid->addWidget(new QLabel(tr("Digits"), numbers), 0, 1);
    grid->addWidget(new QLabel(tr("Notation"), numbers), 0, 2);
    m_answers = add_format_row(grid, 1, tr("Answers"));
    m_variables = add_format_row(grid, 2, tr("Variables"));
    m_angle = new QComboBox(numbers);
    m_angle->addItems({tr("Degrees"), tr("Radians")});
    auto* angle_label = new QLabel(tr("&Angles:"), numbers);
    angle_label->setBuddy(m_angle);
    grid->addWidget(angle_label, 3, 0);
    grid->addWidget(m_angle, 3, 1, 1, 2);
    m_for_new = new QCheckBox(tr("Use these for &new documents too"), numbers);
    m_for_new->setChecked(parser == nullptr);
    m_for_new->setEnabled(parser != nullptr);
    grid->addWidget(m_for_new, 4, 0, 1, 5);

    // What the dialog shows first: the document's engine, or what a new engine would take.
    engine::Parser defaults;
    engine::Parser& shown = parser ? *parser : defaults;
    if (!parser && services.settings) {
        document::ApplyToNewParser(services.options, defaults);
        document::ReadGlobalSettings(*services.settings, defaults);
    }
    const auto fill = [](FormatControls& controls, const engine::PrecformType& format) {
        controls.digits->setValue(format.precision);
        controls.notation->setCurrentIndex(format.format);
        controls.point->setChecked(format.dec_point);
        controls.sign->setChecked(format.lead_sign);
    };
    fill(m_answers, shown.answer_format());
    fill(m_variables, shown.variable_format());
    m_angle->setCurrentIndex(shown.angle_type() == 0 ? 0 : 1);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(program);
    layout->addWidget(numbers);
    layout->addWidget(buttons);
}

OptionsDialog::FormatControls OptionsDialog::add_format_row(QGridLayout* grid, int row, const QString& title) {
    QWidget* owner = grid->parentWidget();
    FormatControls controls{new QSpinBox(owner), new QComboBox(owner), new QCheckBox(tr("Keep point"), owner),
                            new QCheckBox(tr("Show +"), owner)};
    controls.digits->setRange(1, 15);
    controls.notation->addItems({tr("Decimal"), tr("Scientific")});
    grid->addWidget(new QLabel(title, owner), row, 0);
    grid->addWidget(controls.digits, row, 1);
    grid->addWidget(controls.notation, row, 2);
    grid->addWidget(controls.point, row, 3);
    grid->addWidget(controls.sign, row, 4);
    return controls;
}

void OptionsDialog::accept() {
    document::AppSettings& options = m_services.options;
    options.Sound = m_sound->isChecked();
    options.CalculationMethod = m_method->currentIndex();
    options.IncrementalVariables = m_incremental->isChecked();
    options.UseSquareFunctionBrackets = m_square->isChecked();
    options.RecalcDependentLines = m_recalc->isChecked();
    options.PreciseArithmetic = m_precise->isChecked();
    if (m_services.sounds) m_services.sounds->set_enabled(options.Sound);

    const auto read = [](const FormatControls& controls, engine::PrecformType& format) {
        format.precision = controls.digits->value();
        format.format = controls.notation->currentIndex();
        format.dec_point = controls.point->isChecked();
        format.lead_sign = controls.sign->isChecked();
    };
    if (m_parser) {
        read(m_answers, m_parser->answer_format());
        read(m_variables, m_parser->variable_format());
        m_parser->set_angle_type(m_angle->currentIndex());
        m_parser->set_vars_saved(false); // the document's [SETUP] changed
    }
    if (store::IniFile* ini = m_services.settings) {
        ini->WriteString(k_options, "Sound", options.Sound ? "1" : "0");
        ini->WriteString(k_options, "CalculationMethod", std::to_string(options.CalculationMethod));
        ini->WriteString(k_options, "IncrementalVariables", options.IncrementalVariables ? "1" : "0");
        ini->WriteString(k_options, "UseSquareFunctionBrackets", options.UseSquareFunctionBrackets ? "1" : "0");
        ini->WriteString(k_options, "RecalcDependentLines", options.RecalcDependentLines ? "1" : "0");
        ini->WriteString(k_options, "PreciseArithmetic", options.PreciseArithmetic ? "1" : "0");
        if (m_for_new->isChecked()) {
            engine::PrecformType answers, variables;
            read(m_answers, answers);
            read(m_variables, variables);
            const auto write = [ini](const char* prefix, const engine::PrecformType& format) {
                const std::string p(prefix);
                ini->WriteString(k_parser_options, p + "Precision", std::to_string(format.precision));
                ini->WriteString(k_parser_options, p + "Format", std::to_string(format.format));
                ini->WriteString(k_parser_options, p + "DecPoint", format.dec_point ? "1" : "0");
                ini->WriteString(k_parser_options, p + "LeadSign", format.lead_sign ? "1" : "0");
            };
            write("Ans", answers);
            write("Var", variables);
            ini->WriteString(k_parser_options, "AngleType", std::to_string(m_angle->currentIndex()));
        }
        ini->Save();
    }
    QDialog::accept();
}

} // namespace quorvex::gui
