// The graph window's texts: notes placed, moved and deleted by clicks, point labels toggled, and
// the header and footer edited in place.
#include "graph_window.h"

#include "graph_view.h"
#include "qt_chart_2d.h"

#include "graph/build_2d.h"
#include "graph/graph_limits.h"
#include "graph/graph_types.h"
#include "graph/interval_labels.h"
#include "graph/note_hit.h"
#include "graph/sweep_3d.h"
#include "gui/common/message_reporter.h"
#include "gui/common/services.h"
#include "gui/editor/document_window.h"
#include "gui/graph3d/graph3d_view.h"

#include <QChart>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QShortcut>
#include <QStackedWidget>

#include <sstream>

namespace quorvex::gui {

void GraphWindow::click_at(QPointF at) {
    if (showing_3d()) return;
    if (m_chart->region_at(at) == QtChart2D::Region::Data && place_pending_note(qRound(at.x()), qRound(at.y()))) return;
    if (graph::GraphData* shown = drawn_graph()) {
        if (graph::GraphNote* note = graph::note_near(*shown, qRound(at.x()), qRound(at.y()))) {
            ask_remove_note(*note);
            return;
        }
    }
    toggle_label_near(at);
}

void GraphWindow::ask_remove_note(graph::GraphNote& note) {
    graph::GraphData* shown = drawn_graph();
    if (!shown) return;
    QString text = QString::fromStdString(note.Text);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    const int answer =
        ask_user(m_document.services(), this, tr("Delete Note"),
                 tr("Delete the note \"%1\"?\n\nYes deletes it. No takes it up so that your next click puts it "
                    "somewhere else. Cancel leaves it where it is.")
                     .arg(text),
                 QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer != QMessageBox::Yes && answer != QMessageBox::No) return;
    shown->Notes.remove_if([&note](const graph::GraphNote& each) { return &each == &note; });
    m_document.parser().set_vars_saved(false);
    draw(m_drawn);
    if (answer == QMessageBox::No) {
        // Moving a note: its text waits for the next click.
        m_pending_note = text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
        shown_picture()->setCursor(Qt::CrossCursor);
        m_status->setText(tr("Click where the note goes."));
    }
}

void GraphWindow::remove_all_notes() {
    graph::GraphData* shown = drawn_graph();
    if (!shown) return;
    shown->FlushNotes();
    m_document.parser().set_vars_saved(false);
    draw(m_drawn);
}

void GraphWindow::remove_all_texts() {
    graph::GraphData* shown = drawn_graph();
    if (!shown) return;
    shown->FlushNotes();
    shown->FlushLabels();
    m_document.parser().set_vars_saved(false);
    draw(m_drawn);
}

bool GraphWindow::edit_title(bool footer) {
    graph::GraphData* shown = drawn_graph();
    if (!shown || showing_3d()) return false;
    delete m_title_editor;
    m_editing_footer = footer;
    // One line is edited; the lines after it stay.
    const std::string& text = footer ? shown->Footer : shown->Header;
    m_title_editor = new QLineEdit(QString::fromStdString(text.substr(0, text.find("\r\n"))), m_view->viewport());
    m_title_editor->setObjectName(footer ? QStringLiteral("footerEditor") : QStringLiteral("headerEditor"));
    const QRectF place = m_chart->title_rect(footer ? QtChart2D::Region::Footer : QtChart2D::Region::Header);
    const QPoint corner = m_view->mapFromScene(m_chart->chart()->mapToScene(place.topLeft()));
    m_title_editor->setGeometry(QRect(corner, place.size().toSize()).adjusted(-40, 0, 40, 4));
    m_title_editor->setAlignment(Qt::AlignCenter);
    m_title_editor->selectAll();
    connect(m_title_editor, &QLineEdit::editingFinished, this, &GraphWindow::commit_title);
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), m_title_editor, [this] {
        m_title_editor->deleteLater();
        m_title_editor = nullptr;
        m_view->setFocus();
    });
    escape->setContext(Qt::WidgetShortcut);
    m_title_editor->show();
    m_title_editor->setFocus();
    return true;
}

void GraphWindow::commit_title() {
    if (!m_title_editor) return;
    QLineEdit* editor = m_title_editor;
    m_title_editor = nullptr;
    editor->deleteLater();
    graph::GraphData* shown = drawn_graph();
    if (!shown) return;
    std::string& text = m_editing_footer ? shown->Footer : shown->Header;
    const size_t rest = text.find("\r\n");
    std::string edited = editor->text().toStdString() + (rest == std::string::npos ? std::string() : text.substr(rest));
    if (edited == text) return;
    text = graph::bounded_graph_text(edited);
    m_document.parser().set_vars_saved(false);
    m_chart->set_titles(graph::bounded_graph_text(shown->Header), graph::bounded_graph_text(shown->Footer),
                        graph::bounded_graph_text(shown->XAxisTitle), graph::bounded_graph_text(shown->YAxisTitle));
    m_view->setFocus();
}

bool GraphWindow::place_pending_note(int x, int y) {
    auto& graphs = m_document.document().Graphs;
    if (m_pending_note.isEmpty() || m_drawn < 0 || m_drawn >= static_cast<int>(graphs.size())) return false;
    // Kept with its line ends as CR LF, as a document keeps notes.
    const std::string text = m_pending_note.toStdString();
    graph::GraphData& shown = graphs[static_cast<size_t>(m_drawn)].Data;
    shown.Notes.emplace_back(text.c_str(), x, y, -1, true);
    m_pending_note.clear();
    shown_picture()->unsetCursor();
    m_document.parser().set_vars_saved(false);
    if (showing_3d()) {
        const graph::Grid3D grid = m_view3d->grid(); // a copy: building the chart clears it first
        graph::build_3d(shown, grid, *m_view3d);
    } else {
        draw(m_drawn);
    }
    return true;
}

bool GraphWindow::toggle_label(size_t place_x, size_t place_y, const std::function<std::string(const NumberText&)>& label) {
    auto& graphs = m_document.document().Graphs;
    if (m_drawn < 0 || m_drawn >= static_cast<int>(graphs.size())) return false;
    graph::GraphData& shown = graphs[static_cast<size_t>(m_drawn)].Data;
    const auto existing = std::find_if(shown.Notes.begin(), shown.Notes.end(), [&](const graph::GraphNote& note) {
        return !note.IsNote && note.PosX == static_cast<int>(place_x) && note.PosY == static_cast<int>(place_y);
    });
    if (existing != shown.Notes.end()) {
        shown.Notes.erase(existing);
    } else {
        // The numbers at the precision the document shows its answers with.
        const int digits = m_document.parser().answer_format().precision;
        const NumberText text = [digits](double number) {
            std::ostringstream out;
            engine::Variable::StreamVariable(engine::complex(number, 0), out, digits);
            return out.str();
        };
        shown.Notes.emplace_back(label(text).c_str(), static_cast<int>(place_x), static_cast<int>(place_y), -1, false);
    }
    m_document.parser().set_vars_saved(false); // the document changed
    return true;
}

void GraphWindow::toggle_label_3d(size_t i, size_t j, double x, double z) {
    const bool changed = toggle_label(i, j, [&](const NumberText& text) {
        graph::GraphData& shown = m_document.document().Graphs[static_cast<size_t>(m_drawn)].Data;
        const double value = graph::value_at_3d(m_document.parser(), shown, x, z).value_or(m_view3d->grid().value(i, j));
        return graph::point_label_3d(text(x), text(value), text(z));
    });
    if (!changed) return;
    // The same grid, no new sweep; a copy, as building the chart clears it first.
    const graph::Grid3D grid = m_view3d->grid();
    graph::build_3d(m_document.document().Graphs[static_cast<size_t>(m_drawn)].Data, grid, *m_view3d);
}

void GraphWindow::toggle_label_near(QPointF at) {
    if (m_chart->chart()->series().isEmpty()) return;
    // A click 10 pixels or farther from every point labels nothing.
    const std::optional<graph::NearPoint> near = m_chart->point_near(at, 10);
    if (!near) return;
    if (!m_label_mode) {
        // Labels off: a click only takes a label away.
        graph::GraphData* shown = drawn_graph();
        if (!shown || !shown->GetLabel(static_cast<int>(near->series), static_cast<int>(near->point))) return;
    }
    const graph::ChartData& data = m_chart->data();
    const graph::GraphData* shown = drawn_graph();
    const int type = shown ? shown->Type : 0;
    const bool changed = toggle_label(near->series, near->point, [&](const NumberText& text) {
        const double y = data.y(near->series, near->point);
        if (type == graph::graph_type::Hystogram || type == graph::graph_type::Pareto) {
            // The bar's interval as its axis names it; a Pareto chart's share at three digits.
            const bool pareto = type == graph::graph_type::Pareto;
            std::ostringstream three;
            engine::Variable::StreamVariable(engine::complex(y, 0), three, 3);
            return graph::histogram_point_label(pareto, m_chart->category_labels().value(static_cast<qsizetype>(near->point)).toStdString(),
                                                pareto ? three.str() : text(y));
        }
        return " (" + text(data.x(near->series, near->point)) + " , " + text(y) + ") ";
    });
    if (changed) draw(m_drawn);
}

bool GraphWindow::arm_note(const QString& text) {
    if (text.contains(QLatin1Char('|'))) {
        tell(tr("A note can not hold the character '|': a graph's file keeps line ends that way."));
        return false;
    }
    QStringList lines = text.split(QLatin1Char('\n'));
    if (lines.size() > 15) lines = lines.mid(0, 15); // a note shows at most fifteen lines
    std::string note = lines.join(QStringLiteral("\r\n")).toStdString();
    const size_t length = graph::graph_text_length(note);
    if (graph::cut_graph_text(note)) {
        tell(tr("The note had %1 characters; a note holds at most %2, so the rest was left out.")
                 .arg(length)
                 .arg(graph::k_max_graph_text));
    }
    m_pending_note = QString::fromStdString(note);
    shown_picture()->setCursor(Qt::CrossCursor);
    m_status->setText(tr("Click where the note goes."));
    return !m_pending_note.isEmpty();
}

void GraphWindow::insert_note_with_dialog() {
    if (m_drawn < 0) return;
    bool given = false;
    const QString text = QInputDialog::getMultiLineText(this, tr("Insert Note"), tr("Text of the note:"), {}, &given);
    if (given && !text.trimmed().isEmpty()) arm_note(text);
}

} // namespace quorvex::gui
