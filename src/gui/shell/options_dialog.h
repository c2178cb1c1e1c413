#pragma once
#include <QDialog>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QSpinBox;

namespace quorvex::engine {
class Parser;
}

namespace quorvex::gui {

struct Services;

// The program's options ([OPTIONS] of Quorvex.ini) and the number formats and angle unit of the
// active document, which can also become those of new documents ([PARSER OPTIONS]).
class OptionsDialog : public QDialog {
    Q_OBJECT

public:
    // `parser`: the active document's engine, or null when no document is open.
    OptionsDialog(Services& services, engine::Parser* parser, QWidget* parent = nullptr);

    void accept() override;

private:
    struct FormatControls {
        QSpinBox* digits;
        QComboBox* notation;
        QCheckBox* point;
        QCheckBox* sign;
    };
    FormatControls add_format_row(QGridLayout* grid, int row, const QString& title);

    Services& m_services;
    engine::Parser* m_parser;
    QCheckBox* m_sound;
    QCheckBox* m_incremental;
    QComboBox* m_method;
    QCheckBox* m_square;
    QCheckBox* m_recalc;
    QCheckBox* m_precise;
    QComboBox* m_angle;
    FormatControls m_answers{};
    FormatControls m_variables{};
    QCheckBox* m_for_new;
};

} // namespace quorvex::gui
