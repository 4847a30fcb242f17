// The firm's sales defaults in tblParameters: the sales tax ("TaxRates"), the delivery charge
// ("ShippingPars") and the notes text ("InvTerms"), read into an order sheet when the customer
// order window opens and saved from its two small panels and its notes button.
#pragma once

struct CustOrderSheet;
class QString;

// LoadShippingPars, LoadTaxRates and LoadInvTerms, in that order.
void LoadSalesDefaults(CustOrderSheet& sheet);
// The delivery name, cost and tax-on-delivery tick. A failing query is passed over.
void LoadShippingPars(CustOrderSheet& sheet);
// The tax rate and name; without a row the rate reads "0". A failing query is passed over.
void LoadTaxRates(CustOrderSheet& sheet);
// The notes text.
void LoadInvTerms(CustOrderSheet& sheet);

// Command13 of frmSalesTax: the open document takes the panel's name and rate and its tax is
// worked out again (the total waits for the next recalculation), whatever the answer to the
// question whether to keep them as the default. The panel then closes.
void SaveSalesTaxDefaults(CustOrderSheet& sheet);
// cmdSaveDelCharges of frmEditDelCharges, behind the sales guard. On Yes the open document takes
// the panel's name and cost and the row is replaced. True when the panel is to close.
bool SaveDeliveryDefaults(CustOrderSheet& sheet);
// Command14: asks, then keeps the notes as the default text.
void SaveNotesDefault(const QString& notes);
