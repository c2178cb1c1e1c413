#include "simulation_player.h"

#include "qt_chart_2d.h"

#include <QTimer>

namespace quorvex::gui {

SimulationPlayer::SimulationPlayer(QtChart2D& chart, QObject* parent)
    : QObject(parent), m_chart(chart), m_timer(new QTimer(this)) {
    connect(m_timer, &QTimer::timeout, this, &SimulationPlayer::step);
}

SimulationPlayer::~SimulationPlayer() = default;

bool SimulationPlayer::start(QString* why) {
    stop();
    auto simulation = std::make_unique<graph::Simulation>(m_chart.data());
    if (!simulation->playable()) {
        if (why) *why = tr("To run a graphic simulation, you must first build a graph with a family of curves.");
        return false;
    }
    m_simulation = std::move(simulation);
    const graph::Simulation::Frame& first = m_simulation->frame(0);
    m_chart.show_frame(first.x, first.y, first.label);
    m_timer->start(m_simulation->delay());
    Q_EMIT runningChanged(true);
    Q_EMIT frameShown(QString::fromStdString(first.label).trimmed());
    return true;
}

void SimulationPlayer::stop() {
    if (!m_simulation) return;
    m_timer->stop();
    m_simulation.reset();
    Q_EMIT runningChanged(false);
}

void SimulationPlayer::step() {
    if (!m_simulation) return;
    const graph::Simulation::Frame& frame = m_simulation->advance();
    m_chart.show_frame(frame.x, frame.y, frame.label);
    Q_EMIT frameShown(QString::fromStdString(frame.label).trimmed());
}

void SimulationPlayer::slower() {
    if (!m_simulation) return;
    m_simulation->slower();
    m_timer->setInterval(m_simulation->delay());
}

void SimulationPlayer::faster() {
    if (!m_simulation) return;
    m_simulation->faster();
    m_timer->setInterval(m_simulation->delay());
}

} // namespace quorvex::gui
