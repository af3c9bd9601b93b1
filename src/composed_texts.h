// The help texts that are more than one translation: they name the product or the device, or are
// put together from several. Each writes into a block of VENTARO_TEXT_SIZE zeroes and cuts the text
// to fit. Callers hold ProviderMutex.
#ifndef VENTARO_COMPOSED_TEXTS_H
#define VENTARO_COMPOSED_TEXTS_H

void writeNetworkHelp(char* block);
void writePowerOnWithMobileHelp(char* block);
void writeDeviceNameHelp(char* block);
void writeEasyConnectionHelp(char* block);
void writeCertificateListHelp(char* block);
void writeWifiDirectHelp(char* block);

#endif  // VENTARO_COMPOSED_TEXTS_H
