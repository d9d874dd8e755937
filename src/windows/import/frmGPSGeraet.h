#pragma once
#include <QDialog>
#include <memory>
#include <optional>

namespace Ui {
class FrmGPSGeraet;
}

// Which GPS device hangs on which port.
struct DeviceChoice {
  QString format, port;
};

// Asks for the device that is to be read out. What was chosen last is proposed.
class FrmGPSGeraet : public QDialog {
  Q_OBJECT

 public:
  explicit FrmGPSGeraet(QWidget* parent = nullptr);
  ~FrmGPSGeraet() override;
  DeviceChoice Choice() const;  // as it is chosen now

 private:
  std::unique_ptr<Ui::FrmGPSGeraet> ui;
};

// Shows it and waits; nothing if the user cancelled or named no port.
std::optional<DeviceChoice> Ask_Gps_Device(QWidget* parent);
