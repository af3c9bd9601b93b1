// The help texts that are not a single translation: they name the product or the device, or combine
// several texts. Each writes into a block of VENTARO_TEXT_SIZE zeroes and cuts the text to fit.
// Callers hold ProviderMutex.
#ifndef VENTARO_COMPOSED_TEXTS_H
#define VENTARO_COMPOSED_TEXTS_H

void writeNetworkHelp(char* block);
void writePowerOnWithMobileHelp(char* block);
void writeDeviceNameHelp(char* block);
void writeEasyConnectionHelp(char* block);
void writeCertificateListHelp(char* block);
void writeWifiDirectHelp(char* block);

#endif  // VENTARO_COMPOSED_TEXTS_H
